#include "platform/windows/windows_shell.h"

#include <gtest/gtest.h>

#include "platform/windows/wide_text.h"
#include "platform/windows/windows_api.h"

namespace platform::windows {
namespace {

TEST(WindowsShell, TheProgramFolderHoldsTheProgram) {
    const std::string folder = WindowsShell().programFolder();
    EXPECT_FALSE(folder.ends_with('\\'));
    const std::wstring program = wideText(folder + "\\platform_tests.exe");
    EXPECT_NE(::GetFileAttributesW(program.c_str()), INVALID_FILE_ATTRIBUTES) << folder;
}

TEST(WindowsShell, FoldersAreSeparatedByTheBackslash) {
    EXPECT_EQ(WindowsShell().pathSeparator(), '\\');
}

}  // namespace
}  // namespace platform::windows
