#include "tests/cli/companion.h"

namespace {

using support::Outcome;

class CreateCommand : public support::RealCompanionTest {
  protected:
    std::string tables(const std::string& path) { return companion.output({"dump", path}); }

    const std::string archive = folder.pathOf("a.mdb");
};

constexpr const char* emptyTables = "table\trows\nmain\t0\nmedia\t0\n";

TEST_F(CreateCommand, MakesAnEmptyArchive) {
    EXPECT_EQ(companion.output({"create", archive}), "");
    EXPECT_EQ(tables(archive), emptyTables);
}

TEST_F(CreateCommand, MakesAnArchiveOfTheFormatAskedFor) {
    constexpr std::size_t versionOffset = 0x14;
    companion.output({"create", archive});
    EXPECT_EQ(folder.read("a.mdb").at(versionOffset), 1);
    EXPECT_EQ(companion.output({"create", archive, "--force", "--format", "jet3"}), "");
    EXPECT_EQ(folder.read("a.mdb").at(versionOffset), 0);
    EXPECT_EQ(tables(archive), emptyTables);
    EXPECT_EQ(companion.run({"create", archive, "--force", "--format", "jet5"}).code, 2);
}

TEST_F(CreateCommand, RefusesAFileThatIsThere) {
    folder.makeFile("a.mdb", "precious");
    const Outcome outcome = companion.run({"create", archive});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.err,
              "vdln: " + archive + ": there is a file of that name already; --force replaces it\n");
    EXPECT_EQ(folder.read("a.mdb"), "precious");
}

TEST_F(CreateCommand, ForceReplacesTheFile) {
    folder.makeFile("a.mdb", "old");
    EXPECT_EQ(companion.output({"create", archive, "--force"}), "");
    EXPECT_EQ(tables(archive), emptyTables);
    EXPECT_FALSE(folder.exists("a.mdb.new1"));
}

TEST_F(CreateCommand, ForceAlsoMakesAFileThatIsNotThere) {
    companion.output({"create", archive, "--force"});
    EXPECT_EQ(tables(archive), emptyTables);
}

TEST_F(CreateCommand, AFolderIsNeverReplaced) {
    folder.makeFolder("a.mdb");
    EXPECT_EQ(companion.run({"create", archive}).err,
              "vdln: " + archive + ": there is a file of that name already\n");
    const Outcome outcome = companion.run({"create", archive, "--force"});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.err,
              "vdln: " + archive + ": this is a folder or device, which is not replaced\n");
}

TEST_F(CreateCommand, AFolderThatIsNotThereIsOneLine) {
    const std::string path = folder.pathOf("none/a.mdb");
    const Outcome outcome = companion.run({"create", path});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.err.starts_with("vdln: " + path + ": the file cannot be created: "))
        << outcome.err;
    EXPECT_TRUE(outcome.err.find('\n') == outcome.err.size() - 1) << outcome.err;
}

TEST_F(CreateCommand, AnotherExtensionIsTakenAsGivenWithAWord) {
    const std::string path = folder.pathOf("archive");
    const Outcome outcome = companion.run({"create", path});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "vdln: " + path +
                               ": created; other programs look for archives by the extension "
                               ".mdb\n");
    EXPECT_TRUE(folder.exists("archive"));
    EXPECT_EQ(companion.output({"create", folder.pathOf("B.MDB")}), "");
}

/// A machine whose disk has no room for an archive.
class FullDisk : public base::FileOpener {
  public:
    explicit FullDisk(base::FileOpener& real) : real_(real) {}

    Opened open(const std::string& path, Mode mode) override {
        Opened opened = real_.open(path, mode);
        if (opened.file != nullptr) {
            opened.file = std::make_unique<File>(std::move(opened.file), path);
        }
        return opened;
    }
    void pause(int milliseconds) override { real_.pause(milliseconds); }

  private:
    class File : public base::RandomAccessFile {
      public:
        File(std::unique_ptr<base::RandomAccessFile> real, std::string path)
            : real_(std::move(real)), path_(std::move(path)) {}

        std::size_t readAt(std::uint64_t offset, void* bytes, std::size_t count) override {
            return real_->readAt(offset, bytes, count);
        }
        std::size_t writeAt(std::uint64_t offset, const void* bytes, std::size_t count) override {
            constexpr std::uint64_t room = 30'000;
            if (offset + count > room) {
                throw base::FileFailure(path_ + ": No space left on device");
            }
            return real_->writeAt(offset, bytes, count);
        }
        std::uint64_t size() override { return real_->size(); }
        void truncate(std::uint64_t size) override { real_->truncate(size); }
        void sync() override { real_->sync(); }
        bool tryLock(Lock lock) override { return real_->tryLock(lock); }
        std::string identity() override { return real_->identity(); }
        bool writable() const override { return real_->writable(); }

      private:
        std::unique_ptr<base::RandomAccessFile> real_;
        std::string path_;
    };

    base::FileOpener& real_;
};

class CreateOnAFullDisk : public CreateCommand {
  protected:
    CreateOnAFullDisk() { fullMachine.opener = &disk; }

    FullDisk disk{machine->files()};
    support::FakePlatform fullMachine;
    support::Companion fullCompanion{fullMachine};
};

TEST_F(CreateOnAFullDisk, LeavesNothingBehind) {
    const Outcome outcome = fullCompanion.run({"create", archive});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.err, "vdln: " + archive + ": No space left on device\n");
    EXPECT_FALSE(folder.exists("a.mdb"));
}

TEST_F(CreateOnAFullDisk, ForceKeepsTheOldFile) {
    folder.makeFile("a.mdb", "precious");
    const Outcome outcome = fullCompanion.run({"create", archive, "--force"});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(folder.read("a.mdb"), "precious");
    EXPECT_FALSE(folder.exists("a.mdb.new1"));
}

}  // namespace
