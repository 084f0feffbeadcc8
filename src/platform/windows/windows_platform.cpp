
#include <string>

#include "platform/clock.h"
#include "platform/platform.h"
#include "platform/windows/windows_api.h"
#include "platform/windows/windows_directory_lister.h"
#include "platform/windows/windows_drives.h"
#include "platform/windows/windows_file_opener.h"
#include "platform/windows/windows_private_profile.h"
#include "platform/windows/windows_shell.h"

namespace platform {

namespace windows {

namespace {

class WindowsClock : public Clock {
  public:
    SystemTime localNow() override {
        SYSTEMTIME now{};
        ::GetLocalTime(&now);
        return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
    }
};

class WindowsPlatform : public Platform {
  public:
    explicit WindowsPlatform(const std::string& settingsFilePath)
        : drives_(profile_, settingsFilePath) {
        // A drive without a medium is an ordinary answer: the system must not ask for a disk.
        ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    }

    Drives& drives() override { return drives_; }
    std::unique_ptr<DirectoryLister> createDirectoryLister() override {
        return std::make_unique<WindowsDirectoryLister>(
            [this](char letter) { return drives_.rootOf(letter); });
    }
    PrivateProfile& privateProfile() override { return profile_; }
    Clock& clock() override { return clock_; }
    ShellServices& shell() override { return shell_; }
    base::FileOpener& files() override { return files_; }

  private:
    WindowsPrivateProfile profile_;
    WindowsDrives drives_;
    WindowsClock clock_;
    WindowsShell shell_;
    WindowsFileOpener files_;
};

}  // namespace

}  // namespace windows

std::unique_ptr<Platform> createPlatform(const std::string& settingsFilePath) {
    return std::make_unique<windows::WindowsPlatform>(settingsFilePath);
}

std::unique_ptr<Platform> createPlatform() {
    return createPlatform(windows::WindowsShell().programFolder() + "\\settings\\vdln.ini");
}

}  // namespace platform
