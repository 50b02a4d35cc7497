#pragma once

#include "host/znKernelServices/zndNode.h"

/// Stands for a node with a reference core.
class ZN_HOST_EXPORT zndReferenceNode : public zndNode
{
    Q_OBJECT

public:
    /// 0 makes an empty wrapper.
    explicit zndReferenceNode(std::uint64_t objectId);

    /// Whether the reference names a smart file.
    bool hasSmartReference() const;
    /// Makes the reference name this file, as an absolute path.
    void setSmartPath(const QString& path);
    /// Replaces what hangs below the node by the content of the smart file, without the file's own root, and marks the
    /// reference as loaded. When the file cannot be loaded the log tells why and the old content stays.
    void loadSmartReference();
};
