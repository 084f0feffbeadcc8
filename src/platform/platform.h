#pragma once

#include <memory>
#include <string>

#include "base/random_access_file.h"

namespace platform {

class Clock;
class DirectoryLister;
class Drives;
class PrivateProfile;
class ShellServices;

/// The machine, as main() hands it to the program. The references live as long as the platform.
class Platform {
  public:
    virtual ~Platform() = default;

    virtual Drives& drives() = 0;
    virtual std::unique_ptr<DirectoryLister> createDirectoryLister() = 0;
    virtual PrivateProfile& privateProfile() = 0;
    virtual Clock& clock() = 0;
    virtual ShellServices& shell() = 0;
    virtual base::FileOpener& files() = 0;
};

/// The machine that the program runs on. `settingsFilePath` is asked for folders that the user has
/// made drives (section "drives": letter = folder); it need not exist.
std::unique_ptr<Platform> createPlatform(const std::string& settingsFilePath);
/// The same with the settings file that lies beside the executable.
std::unique_ptr<Platform> createPlatform();

}  // namespace platform
