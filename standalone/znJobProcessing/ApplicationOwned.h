#pragma once

#include <QCoreApplication>
#include <QPointer>

namespace znJobs
{

/// The one T of the application object, which owns it; as long as there is no such object, one that goes when the
/// next is made. What one application object did not live to do, with its events, is the business of the next one's T.
template <typename T>
T& applicationOwned()
{
    static QPointer<T> current;
    QCoreApplication* const application = QCoreApplication::instance();
    if (!current || current->parent() != application) {
        delete current.data();
        current = new T;
        current->setParent(application);
    }
    return *current;
}

} // namespace znJobs
