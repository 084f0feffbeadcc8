// What is no database that the engine can open: each is refused with one clear line.

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "base/file_path.h"
#include "jet/header_page.h"
#include "tests/jet/engine_fixture.h"

namespace jet_test {

namespace {

using base::EngineFault;

}  // namespace

class RefusedFile : public EngineTest {
  protected:
    /// Opens a file with this content and expects a failure that is one line: the path, then
    /// `words`.
    void expectRefused(const std::string& content, EngineFault fault, const std::string& words) {
        const std::string path = folder.pathOf("file.mdb");
        std::ofstream(base::filePath(path), std::ios::binary | std::ios::trunc) << content;
        expectRefusedAt(path, fault, words);
        EXPECT_EQ(contentOf(path), content) << "the file was changed";
    }
    void expectRefusedAt(const std::string& path, EngineFault fault, const std::string& words) {
        std::string text;
        EXPECT_EQ(faultOf([&] { jet::Database::open(engine, path); }, &text), fault);
        EXPECT_EQ(text, path + ": " + words);
        EXPECT_EQ(text.find('\n'), std::string::npos);
    }
    static std::string contentOf(const std::string& path) {
        std::ifstream in(base::filePath(path), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    /// The start of a file of some Jet version; long enough for any check.
    static std::string headed(const std::string& name, char version) {
        std::string content(16384, '\0');
        content[1] = 1;
        content.replace(4, name.size(), name);
        content[0x14] = version;
        return content;
    }
};

TEST_F(RefusedFile, AnEmptyFile) {
    expectRefused("", EngineFault::NotADatabase, "the file is empty");
}

TEST_F(RefusedFile, ATextFile) {
    expectRefused("This is a list of what I keep in the attic.\n", EngineFault::NotADatabase,
                  "this is no Jet database but another kind of file");
}

TEST_F(RefusedFile, AFileOfOneByte) {
    expectRefused("x", EngineFault::NotADatabase,
                  "this is no Jet database but another kind of file");
}

TEST_F(RefusedFile, AnSqliteDatabase) {
    expectRefused(std::string("SQLite format 3\0", 16) + std::string(4000, '\0'),
                  EngineFault::NotADatabase, "this is no Jet database but an SQLite database");
}

TEST_F(RefusedFile, AZipFile) {
    expectRefused("PK\x03\x04 and so on, for a while, until the header would end",
                  EngineFault::NotADatabase, "this is no Jet database but a ZIP file");
}

TEST_F(RefusedFile, ANewerDatabase) {
    expectRefused(headed("Standard ACE DB", 2), EngineFault::NotADatabase,
                  "this is a database of the newer .accdb format, which is not supported");
}

TEST_F(RefusedFile, AMoneyFile) {
    expectRefused(headed("MSISAM Database", 1), EngineFault::NotADatabase,
                  "this is no Jet database but one that calls itself \"MSISAM Database\"");
}

TEST_F(RefusedFile, ATemporaryDatabase) {
    expectRefused(headed("Temp Jet DB", 1), EngineFault::NotADatabase,
                  "this is no Jet database but one that calls itself \"Temp Jet DB\"");
}

TEST_F(RefusedFile, AnotherJetVersion) {
    expectRefused(headed("Standard Jet DB", 5), EngineFault::NotADatabase,
                  "Jet version number 5 is not supported (0 is Jet 3, 1 is Jet 4)");
}

TEST_F(RefusedFile, ADatabaseCutInItsFirstPages) {
    expectRefused(headed("Standard Jet DB", 1).substr(0, 5000), EngineFault::Damaged,
                  "the database is damaged: the file is cut after 5000 bytes");
}

TEST_F(RefusedFile, AFolder) {
    expectRefusedAt(folder.path(), EngineFault::NotADatabase,
                    "this is a folder or device, not a database file");
}

TEST_F(RefusedFile, AMissingFile) {
    expectRefusedAt(folder.pathOf("none.mdb"), EngineFault::NotFound, "there is no such file");
}

/// The database key and the password lie in the masked part of the header.
class LockedFile : public RefusedFile, public testing::WithParamInterface<jet::FileFormat> {
  protected:
    std::string withHeaderByte(std::size_t offset) {
        std::string content = contentOf(
            makeDatabase(GetParam(), {"main", {{"N", jet::DataType::Long}}, {}}, "made.mdb"));
        content[offset] = static_cast<char>(content[offset] ^ 0x55);
        return content;
    }
};

TEST_P(LockedFile, AnEncodedDatabase) {
    expectRefused(withHeaderByte(0x3E), EngineFault::Encoded,
                  "the database is encoded (encrypted)");
}

TEST_P(LockedFile, ADatabaseWithAPassword) {
    expectRefused(withHeaderByte(0x42), EngineFault::Password, "the database has a password");
}

INSTANTIATE_TEST_SUITE_P(Formats, LockedFile,
                         testing::Values(jet::FileFormat::Jet3, jet::FileFormat::Jet4),
                         [](const auto& format) {
                             return format.param == jet::FileFormat::Jet3 ? "Jet3" : "Jet4";
                         });

}  // namespace jet_test
