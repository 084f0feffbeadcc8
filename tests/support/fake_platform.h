#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/platform.h"
#include "platform/shell_services.h"
#include "tests/support/fake_disk.h"
#include "tests/support/fake_drives.h"
#include "tests/support/memory_profile.h"

namespace support {

/// A clock that stands still until a test sets it.
class FixedClock : public platform::Clock {
  public:
    platform::SystemTime localNow() override { return now; }

    platform::SystemTime now{2001, 3, 7, 9, 5, 0};
};

/// Shell services with a made-up program folder; remembers the pages it was asked to open.
class FakeShell : public platform::ShellServices {
  public:
    std::string programFolder() override { return folder; }
    char pathSeparator() const override { return separator; }
    void openWebPage(const std::string& address) override { openedPages.push_back(address); }

    std::string folder = "/opt/verdolin";
    char separator = '/';
    std::vector<std::string> openedPages;
};

/// A machine in memory. A test fills its public parts and hands it to what it tests.
class FakePlatform : public platform::Platform {
  public:
    platform::Drives& drives() override { return machineDrives; }
    std::unique_ptr<platform::DirectoryLister> createDirectoryLister() override {
        return std::make_unique<FakeDirectoryLister>(disk);
    }
    platform::PrivateProfile& privateProfile() override { return profile; }
    platform::Clock& clock() override { return fixedClock; }
    platform::ShellServices& shell() override { return fakeShell; }
    /// The opener that `opener` points to; std::logic_error where the test has set none.
    base::FileOpener& files() override {
        if (opener == nullptr) {
            throw std::logic_error("this fake machine has no files");
        }
        return *opener;
    }

    FakeDisk disk;
    FakeDrives machineDrives;
    MemoryProfile profile;
    FixedClock fixedClock;
    FakeShell fakeShell;
    base::FileOpener* opener = nullptr;
};

}  // namespace support
