#include "platform/windows/windows_directory_lister.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "base/text.h"
#include "platform/windows/handle.h"
#include "platform/windows/native_path.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_api.h"
#include "tests/support/temporary_folder.h"

namespace platform::windows {
namespace {

class WindowsDirectoryListerTest : public testing::Test {
  protected:
    std::wstring verbatim(const std::wstring& name) const {
        return verbatimPath(wideText(folder.path()) + L'\\' + name);
    }
    void makeFile(const std::wstring& name) const {
        const Handle file(::CreateFileW(verbatim(name).c_str(), GENERIC_WRITE, 0, nullptr,
                                        CREATE_NEW, 0, nullptr));
        ASSERT_TRUE(file.isOpen()) << ::GetLastError();
    }
    bool makeFolder(const std::wstring& name) const {
        return ::CreateDirectoryW(verbatim(name).c_str(), nullptr) != FALSE;
    }
    std::vector<std::string> names(const std::string& pattern) {
        std::vector<std::string> result;
        const auto listing = lister.findFirst(pattern);
        if (!listing) {
            return {"(refused)"};
        }
        FindData data;
        while (listing->next(data)) {
            if (data.cFileName != "." && data.cFileName != "..") {
                result.push_back(data.cFileName);
            }
        }
        std::ranges::sort(result);
        return result;
    }
    bool isFolder(const std::string& path) {
        return (lister.attributes(path) & fileAttributeDirectory) != 0;
    }

    support::TemporaryFolder folder;
    WindowsDirectoryLister lister{[this](char letter) {
        return letter == 'd' ? std::optional(folder.path()) : std::nullopt;
    }};
};

using Names = std::vector<std::string>;

TEST_F(WindowsDirectoryListerTest, FoldersDeeperThan260CharactersAreWalked) {
    std::wstring path;
    std::string shown = "d:";
    for (int depth = 0; depth < 5; ++depth) {
        path += (depth == 0 ? L"" : L"\\") + std::wstring(100, L'x');
        shown += "\\" + std::string(100, 'x');
        ASSERT_TRUE(makeFolder(path));
    }
    makeFile(path + L"\\at the end");
    EXPECT_EQ(names(shown + "\\*"), Names{"at the end"});
    EXPECT_FALSE(isFolder(shown + "\\at the end"));
    EXPECT_TRUE(isFolder(shown));
    EXPECT_EQ(base::utf16Length(lister.typeName(shown + "\\at the end")), 80U);
}

TEST_F(WindowsDirectoryListerTest, NamesThatTheShellCannotReachAreListedAndEntered) {
    ASSERT_TRUE(makeFolder(L"ends in a dot."));
    makeFile(L"ends in a dot.\\aux");
    makeFile(L"ends in a blank ");
    EXPECT_EQ(names("d:\\*"), (Names{"ends in a blank ", "ends in a dot."}));
    EXPECT_EQ(names("d:\\ends in a dot.\\*"), Names{"aux"});
    EXPECT_FALSE(isFolder("d:\\ends in a dot.\\aux"));
    EXPECT_FALSE(isFolder("d:\\ends in a blank "));
}

TEST_F(WindowsDirectoryListerTest, ANameWithALoneSurrogateIsShownAndEntered) {
    const std::wstring name = {L'a', wchar_t(0xD800), L'b'};
    if (!makeFolder(name)) {
        GTEST_SKIP() << "this file system refuses such names";
    }
    makeFile(name + L"\\inside");
    const std::string shown =
        "a\xEF\xBF\xBD"
        "b";
    if (names("d:\\*") != Names{shown}) {
        GTEST_SKIP() << "this system lists such names in a form of its own";
    }
    EXPECT_TRUE(isFolder("d:\\" + shown));
    EXPECT_EQ(names("d:\\" + shown + "\\*"), Names{"inside"});
    EXPECT_FALSE(isFolder("d:\\" + shown + "\\inside"));
}

TEST_F(WindowsDirectoryListerTest, ALinkIsAFileAndNotEntered) {
    ASSERT_TRUE(makeFolder(L"folder"));
    if (!::CreateSymbolicLinkW(
            verbatim(L"link").c_str(), L"folder",
            SYMBOLIC_LINK_FLAG_DIRECTORY | SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE) ||
        ::GetFileAttributesW(verbatim(L"link").c_str()) == INVALID_FILE_ATTRIBUTES) {
        GTEST_SKIP() << "no right to make links, or no links here";
    }
    EXPECT_EQ(names("d:\\*"), (Names{"folder", "link"}));
    EXPECT_FALSE(isFolder("d:\\link"));
    EXPECT_FALSE(lister.findFirst("d:\\link\\*"));
}

TEST_F(WindowsDirectoryListerTest, AnEmptyPathIsNothing) {
    EXPECT_EQ(lister.attributes(""), invalidFileAttributes);
    EXPECT_FALSE(lister.findFirst("d:\\missing\\*"));
    EXPECT_NE(lister.whyNotListed(), "");
}

// ---------------------------------------------------------------------------------------------------
// The wide form of each call gives what the other one gives, as far as the code page goes.

std::string fromCodePage(std::string_view bytes) {
    const auto count = static_cast<int>(bytes.size());
    std::wstring text(bytes.size(), L'\0');
    const int length = ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), count, text.data(), count);
    return utf8Text({text.data(), static_cast<std::size_t>(length)});
}

std::string inCodePage(std::string_view text) {
    const std::wstring wide = wideText(text);
    std::string bytes(4 * wide.size(), '\0');
    const int length =
        ::WideCharToMultiByte(CP_ACP, 0, wide.data(), static_cast<int>(wide.size()), bytes.data(),
                              static_cast<int>(bytes.size()), nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(length));
    return bytes;
}

TEST_F(WindowsDirectoryListerTest, ListsWhatTheCallsInTheCodePageList) {
    for (const char* const name : {"plain.txt", "Größe.doc", "ÆØÅ", "two.dots.pdf", "é"}) {
        folder.makeFile(name, name);
    }
    folder.makeFolder("Straße");
    std::map<std::string, WIN32_FIND_DATAA> theirs;
    WIN32_FIND_DATAA found{};
    const std::string folderInCodePage = inCodePage(folder.path()) + "\\";
    const HANDLE search = ::FindFirstFileA((folderInCodePage + "*").c_str(), &found);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    do {
        theirs[fromCodePage(found.cFileName)] = found;
    } while (::FindNextFileA(search, &found) != FALSE);
    ::FindClose(search);

    const auto listing = lister.findFirst("d:\\*");
    ASSERT_TRUE(listing);
    std::size_t count = 0;
    for (FindData data; listing->next(data); ++count) {
        ASSERT_TRUE(theirs.contains(data.cFileName)) << data.cFileName;
        const WIN32_FIND_DATAA& other = theirs[data.cFileName];
        EXPECT_EQ(data.nFileSizeLow, other.nFileSizeLow);
        EXPECT_EQ(data.nFileSizeHigh, other.nFileSizeHigh);
        EXPECT_EQ(static_cast<DWORD>(data.ftLastWriteTime.ticks),
                  other.ftLastWriteTime.dwLowDateTime);
        EXPECT_EQ(static_cast<DWORD>(data.ftCreationTime.ticks >> 32),
                  other.ftCreationTime.dwHighDateTime);
        const std::string path = folderInCodePage + other.cFileName;
        EXPECT_EQ(lister.attributes("d:\\" + data.cFileName), ::GetFileAttributesA(path.c_str()));
        if (data.cFileName == "." || data.cFileName == "..") {
            continue;
        }
        SHFILEINFOA facts{};
        ::SHGetFileInfoA(path.c_str(), 0, &facts, sizeof facts, SHGFI_TYPENAME);
        EXPECT_EQ(lister.typeName("d:\\" + data.cFileName),
                  fromCodePage({facts.szTypeName, std::size(facts.szTypeName)}))
            << data.cFileName;
    }
    EXPECT_EQ(count, theirs.size());
}

TEST_F(WindowsDirectoryListerTest, TimesAreTakenApartAsTheSystemDoes) {
    for (std::uint64_t ticks = 0; ticks < 0x7000'0000'0000'0000; ticks += 0x00A1'2345'6789'ABCD) {
        const FILETIME time{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
        SYSTEMTIME theirs{};
        ASSERT_TRUE(::FileTimeToSystemTime(&time, &theirs));
        const SystemTime expected{theirs.wYear, theirs.wMonth,  theirs.wDay,
                                  theirs.wHour, theirs.wMinute, theirs.wSecond};
        EXPECT_EQ(fileTimeToSystemTime({ticks}), expected) << ticks;

        FILETIME local{};
        ASSERT_TRUE(::FileTimeToLocalFileTime(&time, &local));
        EXPECT_EQ(static_cast<DWORD>(lister.fileTimeToLocalFileTime({ticks}).ticks),
                  local.dwLowDateTime);
    }
}

}  // namespace
}  // namespace platform::windows
