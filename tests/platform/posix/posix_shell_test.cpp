#include "platform/posix/posix_shell.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include "tests/support/temporary_folder.h"

namespace platform::posix {
namespace {

TEST(PosixShellTest, TheProgramFolderHoldsTheRunningExecutable) {
    PosixShell shell;
    const std::filesystem::path folder = shell.programFolder();
    EXPECT_EQ(std::filesystem::canonical("/proc/self/exe").parent_path(), folder);
    EXPECT_FALSE(folder.string().ends_with('/'));
    EXPECT_EQ(shell.pathSeparator(), '/');
}

/// A folder with an xdg-open of its own, first in the search path, which writes down what it was
/// given.
class FakeBrowser {
  public:
    FakeBrowser() {
        folder_.makeFile("xdg-open", "#!/bin/sh\n{ echo $#; printf '%s' \"$1\"; } > \"" +
                                         folder_.pathOf("unfinished") + "\"\nmv \"" +
                                         folder_.pathOf("unfinished") + "\" \"" +
                                         folder_.pathOf("opened") + "\"\n");
        folder_.setPermissions("xdg-open", 0755);
        path_ = std::getenv("PATH");
        ::setenv("PATH", (folder_.path() + ":" + path_).c_str(), 1);
    }
    ~FakeBrowser() { ::setenv("PATH", path_.c_str(), 1); }

    /// What was opened, after waiting for it; empty when nothing came.
    std::string opened(std::chrono::milliseconds patience) {
        const auto end = std::chrono::steady_clock::now() + patience;
        while (!folder_.exists("opened") && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return folder_.exists("opened") ? folder_.read("opened") : std::string();
    }

  private:
    support::TemporaryFolder folder_;
    std::string path_;
};

TEST(PosixShellTest, AWebPageIsHandedOnAsOneArgument) {
    FakeBrowser browser;
    PosixShell().openWebPage("https://example.org/?a=$(id)&b='; x");
    EXPECT_EQ(browser.opened(std::chrono::seconds(20)), "1\nhttps://example.org/?a=$(id)&b='; x");
}

TEST(PosixShellTest, TheBrowserIsNoChildOfTheProgram) {
    FakeBrowser browser;
    PosixShell().openWebPage("http://example.org/");
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
    EXPECT_EQ(browser.opened(std::chrono::seconds(20)), "1\nhttp://example.org/");
}

TEST(PosixShellTest, OnlyWebAddressesAreOpened) {
    FakeBrowser browser;
    for (const char* const address :
         {"", "--help", "/etc/passwd", "file:///etc/passwd", "example.org", "javascript:x"}) {
        PosixShell().openWebPage(address);
    }
    EXPECT_EQ(browser.opened(std::chrono::milliseconds(200)), "");
}

}  // namespace
}  // namespace platform::posix
