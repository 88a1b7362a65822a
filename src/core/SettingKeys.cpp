#include "core/SettingKeys.h"

namespace SettingKeys {

QString placementPath(QStringView branch) {
    return WindowPlacement.keyPath().arg(branch);
}

} // namespace SettingKeys
