#pragma once

#include <QString>

#include <functional>
#include <memory>
#include <string>

class QFileSystemWatcher;

namespace conversion
{

/// What the converter's progress file says.
struct Progress {
    int value = -1;    ///< percent; negative when the file says none
    std::string stage; ///< the stage word; may be empty
};

/// Reads a progress file, which may be half rewritten at this moment: what cannot be read stays as it was.
Progress readProgress(const QString& file);

/// Follows the progress file of a converter that runs.
///
/// The watcher of the file lives from the first launch of a run to its end: it takes one of the few notification
/// instances that a user has, and thousands of jobs may wait or be kept after their end.
class ConversionProgress
{
public:
    /// `changed` is called whenever the watched file has changed, from the event loop. A converter may write over the
    /// file, or put another in its place by renaming it.
    explicit ConversionProgress(std::function<void()> changed);
    ConversionProgress(const ConversionProgress&) = delete;
    ConversionProgress& operator=(const ConversionProgress&) = delete;
    ~ConversionProgress();

    /// Writes the file's first content and watches it.
    void watch(const QString& file);
    /// Ends the watch of one file.
    void unwatch(const QString& file);
    /// Ends it, and gives the notification instance back. May be called from within `changed`.
    void release(const QString& file);

private:
    void fileChanged(const QString& file);

    std::function<void()> m_changed;
    std::unique_ptr<QFileSystemWatcher> m_watcher;
};

} // namespace conversion
