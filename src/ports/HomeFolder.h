#pragma once

namespace tulvane {

/// Some starts have no HOME, or one that is no absolute path: services, minimal sessions. Everything that the
/// user stores would then go to the root folder, or to wherever the program was started; so HOME becomes what
/// the system says of this user, for this process and those that it starts. To be called before anything asks
/// for the home folder, and while there is one thread.
void knowHomeFolder();

} // namespace tulvane
