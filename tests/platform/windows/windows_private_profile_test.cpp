#include "platform/windows/windows_private_profile.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "platform/windows/windows_api.h"
#include "tests/support/temporary_folder.h"

namespace platform::windows {
namespace {

class WindowsPrivateProfileTest : public testing::Test {
  protected:
    std::string get(const std::string& key, std::size_t bufferSize = 255) {
        return profile.getString("s", key, "none", bufferSize, path);
    }
    bool set(const std::string& key, const std::string& value) {
        return profile.writeString("s", key, value, path);
    }
    /// What the described call gives, bytes of the code page.
    std::string getInCodePage(const std::string& key) {
        std::array<char, 255> buffer{};
        const DWORD length =
            ::GetPrivateProfileStringA("s", key.c_str(), "none", buffer.data(),
                                       static_cast<DWORD>(buffer.size()), path.c_str());
        return {buffer.data(), length};
    }
    bool setInCodePage(const std::string& key, const std::string& value) {
        return ::WritePrivateProfileStringA("s", key.c_str(), value.c_str(), path.c_str()) != FALSE;
    }

    support::TemporaryFolder folder;
    const std::string path = folder.pathOf("vdln.ini");
    WindowsPrivateProfile profile;
};

TEST_F(WindowsPrivateProfileTest, ReadsAndWritesWhatTheCallsInTheCodePageDo) {
    for (const std::size_t length : {0, 1, 254, 255, 300}) {
        const std::string value(length, 'x');
        ASSERT_TRUE(set("ours", value));
        ASSERT_TRUE(setInCodePage("theirs", value));
        EXPECT_EQ(getInCodePage("ours"), value.substr(0, 254));
        EXPECT_EQ(get("theirs"), value.substr(0, 254));
    }
    EXPECT_EQ(getInCodePage("missing"), get("missing"));
}

TEST_F(WindowsPrivateProfileTest, CharactersOfTheCodePageAreTheSameEitherWay) {
    if (::GetACP() != 1252) {
        GTEST_SKIP() << "the system's code page is another one";
    }
    ASSERT_TRUE(setInCodePage("theirs",
                              "d:\\Gr\xFC\xDF"
                              "e.mdb"));
    EXPECT_EQ(get("theirs"), "d:\\Grüße.mdb");
    ASSERT_TRUE(set("ours", "d:\\Æ.mdb"));
    EXPECT_EQ(getInCodePage("ours"), "d:\\\xC6.mdb");
    EXPECT_EQ(get("theirs"), "d:\\Grüße.mdb");
}

TEST_F(WindowsPrivateProfileTest, ACharacterOutsideTheCodePageIsKept) {
    ASSERT_TRUE(setInCodePage("old", "plain"));
    ASSERT_TRUE(set("new", "d:\\東京 😀.mdb"));
    EXPECT_EQ(get("new"), "d:\\東京 😀.mdb");
    EXPECT_EQ(get("old"), "plain");
    EXPECT_EQ(getInCodePage("old"), "plain");
    ASSERT_TRUE(set("old", "changed"));
    EXPECT_EQ(get("new"), "d:\\東京 😀.mdb");
    EXPECT_EQ(get("old"), "changed");
}

TEST_F(WindowsPrivateProfileTest, AFileInUtf8StaysOne) {
    folder.makeFile("vdln.ini", "; 東京\n[s]\nk=日本\n");
    EXPECT_EQ(get("k"), "日本");
    ASSERT_TRUE(set("j", "ж"));
    EXPECT_EQ(folder.read("vdln.ini"), "; 東京\n[s]\nk=日本\nj=ж\n");
}

TEST_F(WindowsPrivateProfileTest, QuotationMarksAndBlanksComeBack) {
    for (const char* const value : {"\"a\"", " a ", "'a'", "a\"b", "a;b=c"}) {
        ASSERT_TRUE(set("k", value));
        EXPECT_EQ(get("k"), value);
    }
}

TEST_F(WindowsPrivateProfileTest, AFolderIsNeitherReadNorWritten) {
    folder.makeFolder("vdln.ini");
    EXPECT_EQ(get("k"), "none");
    EXPECT_FALSE(set("k", "v"));
}

}  // namespace
}  // namespace platform::windows
