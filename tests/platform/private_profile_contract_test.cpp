// What every private-profile service keeps, the one over files and the one that tests use.

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "platform/file_private_profile.h"
#include "tests/platform/machine_parts.h"
#include "tests/support/memory_profile.h"
#include "tests/support/temporary_folder.h"

namespace platform {
namespace {

/// A service together with one of its files.
class Subject {
  public:
    virtual ~Subject() = default;
    virtual PrivateProfile& profile() = 0;
    virtual std::string path() = 0;
    virtual void setText(const std::string& text) = 0;
    virtual std::string text() = 0;
};

class MemorySubject : public Subject {
  public:
    PrivateProfile& profile() override { return profile_; }
    std::string path() override { return "vdln.ini"; }
    void setText(const std::string& text) override { profile_.files[path()] = text; }
    std::string text() override { return profile_.files[path()]; }

  private:
    support::MemoryProfile profile_;
};

class FileSubject : public Subject {
  public:
    explicit FileSubject(std::unique_ptr<PrivateProfile> profile) : profile_(std::move(profile)) {}
    PrivateProfile& profile() override { return *profile_; }
    std::string path() override { return folder_.pathOf("vdln.ini"); }
    void setText(const std::string& text) override { folder_.makeFile("vdln.ini", text); }
    std::string text() override { return folder_.read("vdln.ini"); }

  private:
    support::TemporaryFolder folder_;
    std::unique_ptr<PrivateProfile> profile_;
};

enum class Kind { Memory, File, Machine };

class PrivateProfileContract : public testing::TestWithParam<Kind> {
  protected:
    void SetUp() override {
        switch (GetParam()) {
            case Kind::Memory:
                subject_ = std::make_unique<MemorySubject>();
                break;
            case Kind::File:
                subject_ = std::make_unique<FileSubject>(std::make_unique<FilePrivateProfile>());
                break;
            case Kind::Machine:
                subject_ = std::make_unique<FileSubject>(machineProfile());
                break;
        }
    }
    std::string get(const std::string& key, std::size_t bufferSize = 255) {
        return subject_->profile().getString("s", key, "default", bufferSize, subject_->path());
    }
    bool set(const std::string& key, const std::string& value) {
        return subject_->profile().writeString("s", key, value, subject_->path());
    }
    /// A system's own service ends lines in its own way and may drop blank ones; all else is exact.
    void expectText(const std::string& expected) {
        if (GetParam() == Kind::Machine) {
            EXPECT_EQ(linesOf(subject_->text()), linesOf(expected));
        } else {
            EXPECT_EQ(subject_->text(), expected);
        }
    }
    static std::vector<std::string> linesOf(const std::string& text) {
        std::vector<std::string> lines;
        std::istringstream in(text);
        for (std::string line; std::getline(in, line);) {
            std::erase(line, '\r');
            if (!line.empty()) {
                lines.push_back(line);
            }
        }
        return lines;
    }

    std::unique_ptr<Subject> subject_;
};

TEST_P(PrivateProfileContract, AMissingFileGivesTheDefault) { EXPECT_EQ(get("k"), "default"); }

TEST_P(PrivateProfileContract, TheDefaultIsCutLikeAValue) {
    EXPECT_EQ(get("k", 4), "def");
    EXPECT_EQ(get("k", 1), "");
    EXPECT_EQ(get("k", 0), "");
}

TEST_P(PrivateProfileContract, ValuesAroundTheBufferSize) {
    for (const std::size_t length : {0, 1, 253, 254, 255, 256, 300, 5000}) {
        const std::string value(length, 'x');
        ASSERT_TRUE(set("k", value));
        EXPECT_EQ(get("k"), value.substr(0, 254)) << length;
        EXPECT_EQ(get("k", 10000), value);
    }
}

TEST_P(PrivateProfileContract, ACharacterIsNeverCutInHalf) {
    subject_->setText("[s]\nk=aé日😀b\n");
    EXPECT_EQ(get("k", 2), "a");
    EXPECT_EQ(get("k", 3), "aé");
    EXPECT_EQ(get("k", 4), "aé日");
    EXPECT_EQ(get("k", 5), "aé日");
    EXPECT_EQ(get("k", 6), "aé日😀");
}

TEST_P(PrivateProfileContract, WritingMakesFileSectionAndKey) {
    ASSERT_TRUE(set("k", "v"));
    EXPECT_EQ(get("k"), "v");
    expectText("[s]\nk=v\n");
}

TEST_P(PrivateProfileContract, UnknownSectionsKeysAndCommentsStay) {
    subject_->setText("; note\r\n[other]\r\nx=1\r\n[s]\r\nunknown=2\r\nk=3\r\n\r\n[last]\r\n");
    ASSERT_TRUE(set("K", "new"));
    expectText("; note\r\n[other]\r\nx=1\r\n[s]\r\nunknown=2\r\nk=new\r\n\r\n[last]\r\n");
}

TEST_P(PrivateProfileContract, AnOddCodePageDoesNotHurt) {
    const std::string before = "[\xE4\xF6]\n\x81=\xFF\n[s]\nk=caf\xE9\n";
    subject_->setText(before);
    EXPECT_EQ(get("k"), "café");
    ASSERT_TRUE(set("j", "ü"));
    if (GetParam() != Kind::Machine) {
        EXPECT_EQ(subject_->text(), before + "j=ü\n");
    }
    // A system's own service may write the new line in the code page.
    std::vector<std::string> lines = linesOf(subject_->text());
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_TRUE(lines.back().starts_with("j="));
    lines.pop_back();
    EXPECT_EQ(lines, linesOf(before));
    EXPECT_EQ(get("k"), "café");
    EXPECT_EQ(get("j"), "ü");
}

TEST_P(PrivateProfileContract, ARefusedValueLeavesTheFileAsItWas) {
    subject_->setText("[s]\nk=1\n");
    EXPECT_FALSE(set("k", "two\nlines"));
    EXPECT_EQ(subject_->text(), "[s]\nk=1\n");
}

INSTANTIATE_TEST_SUITE_P(Services, PrivateProfileContract,
                         testing::Values(Kind::Memory, Kind::File, Kind::Machine),
                         [](const auto& service) {
                             switch (service.param) {
                                 case Kind::Memory:
                                     return "Memory";
                                 case Kind::File:
                                     return "File";
                                 case Kind::Machine:
                                     break;
                             }
                             return "Machine";
                         });

}  // namespace
}  // namespace platform
