#pragma once

namespace tarnwick::platform {

/// Names a runtime folder of the user's in the environment where the session named none, as on a
/// login without a desktop: Qt would complain on standard error and take the same one. To be called
/// ahead of any application object with a window.
void preferRuntimeFolder();

} // namespace tarnwick::platform
