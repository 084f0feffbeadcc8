#include <string>

#include "platform/clock.h"
#include "platform/file_private_profile.h"
#include "platform/platform.h"
#include "platform/posix/local_time.h"
#include "platform/posix/posix_directory_lister.h"
#include "platform/posix/posix_drives.h"
#include "platform/posix/posix_file_opener.h"
#include "platform/posix/posix_shell.h"
#include "platform/posix/type_names.h"

namespace platform {

namespace posix {

namespace {

class PosixClock : public Clock {
  public:
    SystemTime localNow() override { return localCalendarNow(); }
};

class PosixPlatform : public Platform {
  public:
    explicit PosixPlatform(const std::string& settingsFilePath)
        : drives_(profile_, settingsFilePath) {}

    Drives& drives() override { return drives_; }
    std::unique_ptr<DirectoryLister> createDirectoryLister() override {
        return std::make_unique<PosixDirectoryLister>(
            [this](char letter) { return drives_.rootOf(letter); }, typeNames_);
    }
    PrivateProfile& privateProfile() override { return profile_; }
    Clock& clock() override { return clock_; }
    ShellServices& shell() override { return shell_; }
    base::FileOpener& files() override { return files_; }

  private:
    FilePrivateProfile profile_;
    PosixDrives drives_;
    TypeNames typeNames_;
    PosixClock clock_;
    PosixShell shell_;
    PosixFileOpener files_;
};

}  // namespace

}  // namespace posix

std::unique_ptr<Platform> createPlatform(const std::string& settingsFilePath) {
    return std::make_unique<posix::PosixPlatform>(settingsFilePath);
}

std::unique_ptr<Platform> createPlatform() {
    return createPlatform(posix::PosixShell().programFolder() + "/settings/vdln.ini");
}

}  // namespace platform
