#pragma once

#include "host/HostExport.h"

#include <memory>

/// What the user wants of every import into the scene. A value: it does not follow later changes.
class ZN_HOST_EXPORT zndSceneImportSettings
{
public:
    struct Values; ///< the host's own

    explicit zndSceneImportSettings(std::shared_ptr<const Values> values);
    ///@{
    /// Shares the values, which nobody changes.
    zndSceneImportSettings(const zndSceneImportSettings& other);
    zndSceneImportSettings& operator=(const zndSceneImportSettings& other);
    ///@}
    ~zndSceneImportSettings();

    /// The material assets of the folder that the user chose go onto the imported materials of the same name.
    bool getApplyMaterialsFromAssetManager() const;
    /// The lowest point of what was imported comes to the height 0.
    bool getPutOnGround() const;
    /// The middle of what was imported comes to the origin.
    bool getCenterInOrigin() const;

private:
    std::shared_ptr<const Values> m_values;
};
