// The process is stopped, or the machine loses power, at every write of every kind of work: the
// file must still be sound, and hold what was stored.

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "base/failure.h"
#include "jet/table_definition.h"
#include "tests/jet/item_table.h"

namespace jet_test {

namespace {

using Decision = ItemSession::Decision;

const std::string path = "/archive.mdb";

struct Work {
    const char* name;
    std::function<void(ItemSession&)> prepare;
    std::function<void(ItemSession&)> perform;
};

Item plainItem(std::int32_t id) {
    return {id, id % 3,
            someText(static_cast<std::uint32_t>(id), 100 + static_cast<std::size_t>(id) % 120), ""};
}

void insertItems(ItemSession& session, std::int32_t from, std::int32_t to) {
    for (std::int32_t id = from; id < to; ++id) {
        session.insert(plainItem(id));
    }
}

/// Every seventh row becomes too long for its page, a second time where `again` is set.
void lengthenItems(ItemSession& session, std::size_t length) {
    session.change([&](Item& item) {
        if (item.id % 7 != 0) {
            return Decision::Keep;
        }
        item.name = someText(static_cast<std::uint32_t>(item.id) + 99, length);
        return Decision::Replace;
    });
}

void giveNotes(ItemSession& session, std::size_t step) {
    session.change([&](Item& item) {
        if (item.id % 4 != 0) {
            return Decision::Keep;
        }
        const auto id = static_cast<std::size_t>(item.id);
        item.note = someText(static_cast<std::uint32_t>(id + step), id * id * step % 4999);
        return Decision::Replace;
    });
}

std::vector<Work> works() {
    return {
        {"Save", [](ItemSession&) {}, [](ItemSession& s) { insertItems(s, 0, 2000); }},
        {"SaveWithFlushes", [](ItemSession& s) { insertItems(s, 0, 100); },
         [](ItemSession& s) {
             for (int part = 1; part < 8; ++part) {
                 insertItems(s, part * 100, part * 100 + 100);
                 s.flush();
             }
         }},
        {"UpdateThatMovesRows", [](ItemSession& s) { insertItems(s, 0, 1300); },
         [](ItemSession& s) { lengthenItems(s, 250); }},
        {"UpdateThatMovesRowsAgain",
         [](ItemSession& s) {
             insertItems(s, 0, 600);
             lengthenItems(s, 150);
             s.flush();
             insertItems(s, 600, 900);
         },
         [](ItemSession& s) {
             lengthenItems(s, 250);
             s.flush();
             lengthenItems(s, 10);
             lengthenItems(s, 255);
         }},
        {"DeletionOfOneMediumOfThree",
         [](ItemSession& s) {
             insertItems(s, 0, 700);
             lengthenItems(s, 250);
         },
         [](ItemSession& s) { s.deleteMedium(1); }},
        {"DeletionOfAllAndSave",
         [](ItemSession& s) {
             insertItems(s, 0, 500);
             giveNotes(s, 7);
         },
         [](ItemSession& s) {
             s.change([](Item&) { return Decision::Delete; });
             s.flush();
             insertItems(s, 2000, 2400);
         }},
        {"ShortNotes", [](ItemSession& s) { insertItems(s, 0, 1500); },
         [](ItemSession& s) {
             s.change([](Item& item) {
                 item.note = someText(static_cast<std::uint32_t>(item.id), 70);
                 return Decision::Replace;
             });
         }},
        // All new notes find room on the one page of notes that is part of the file already.
        {"NotesOnAPageThatHasRoom",
         [](ItemSession& s) {
             insertItems(s, 0, 1500);
             Item first = plainItem(-1);
             first.note = someText(1, 70);
             s.insert(first);
         },
         [](ItemSession& s) {
             s.change([](Item& item) {
                 if (item.id % 23 != 1) {
                     return Decision::Keep;
                 }
                 item.note = someText(static_cast<std::uint32_t>(item.id), 66);
                 return Decision::Replace;
             });
         }},
        {"Notes", [](ItemSession& s) { insertItems(s, 0, 160); },
         [](ItemSession& s) {
             giveNotes(s, 13);
             s.flush();
             giveNotes(s, 17);
             s.deleteMedium(2);
         }},
    };
}

struct Case {
    jet::FileFormat format;
    std::size_t work;
};

std::vector<Case> cases() {
    std::vector<Case> all;
    for (const auto format : {jet::FileFormat::Jet3, jet::FileFormat::Jet4}) {
        for (std::size_t work = 0; work < works().size(); ++work) {
            all.push_back({format, work});
        }
    }
    return all;
}

std::string nameOf(const testing::TestParamInfo<Case>& info) {
    return std::string(works()[info.param.work].name) +
           (info.param.format == jet::FileFormat::Jet3 ? "Jet3" : "Jet4");
}

}  // namespace

class Interruption : public testing::TestWithParam<Case> {
  protected:
    Interruption() : files_(GetParam().format == jet::FileFormat::Jet3 ? 2048 : 4096) {
        ItemSession::create(files_, path, GetParam().format);
        ItemSession session(files_, path, before_);
        work_.prepare(session);
        session.close();
        start_ = files_.read(path);
    }

    /// Does the work once and counts its writes; `fault` is set before.
    template <typename Fault>
    ItemModel perform(Fault fault) {
        files_.heal();
        files_.write(path, start_);
        fault();
        ItemModel model = before_;
        try {
            ItemSession session(files_, path, model);
            work_.perform(session);
            session.close();
        } catch (const base::Failure&) {
            // The process ends here; its destructors find a disk that takes nothing.
        }
        return model;
    }

    /// Looks at the file as the next process finds it, and lets that one write.
    void expectSurvived(ItemModel model, const std::string& when) {
        const jet::CheckReport found = jet::checkDatabase(files_, path);
        ASSERT_TRUE(found.isIntact()) << when << "\n" << textOf(found);
        ItemSession session(files_, path, model);
        const std::vector<Item> items = session.read();
        ASSERT_EQ(model.complaint(items, ItemModel::Accept::AnySinceFlush), "") << when;
        model.adopt(items);
        session.insert(plainItem(1000000));
        session.close();
        const jet::CheckReport mended = jet::checkDatabase(files_, path);
        ASSERT_TRUE(mended.isSound()) << when << "\n" << textOf(mended);
        ItemSession again(files_, path, model);
        ASSERT_EQ(model.complaint(again.read(), ItemModel::Accept::Last), "") << when;
        ASSERT_EQ(again.recordCount(), static_cast<std::int64_t>(model.size())) << when;
    }

    support::FaultyFiles files_;
    Work work_ = works()[GetParam().work];
    ItemModel before_;
    std::string start_;
};

TEST_P(Interruption, EveryWriteMayBeTheLast) {
    const ItemModel whole = perform([] {});
    const std::uint64_t writes = files_.writes();
    ASSERT_GT(writes, 10u);
    expectSurvived(whole, "undisturbed");
    for (std::uint64_t last = 1; last <= writes && !HasFatalFailure(); ++last) {
        const ItemModel model = perform([&] { files_.stopAtWrite = last; });
        files_.heal();
        expectSurvived(model, "stopped at write " + std::to_string(last));
    }
}

TEST_P(Interruption, PowerMayFailAtAnyWrite) {
    perform([] {});
    const std::uint64_t writes = files_.writes();
    std::uint64_t seed = 1;
    for (std::uint64_t last = 1; last <= writes && !HasFatalFailure(); ++last, ++seed) {
        const ItemModel model = perform([&] { files_.stopAtWrite = last; });
        files_.heal();
        files_.cutPower(seed);
        expectSurvived(
            model, "power cut at write " + std::to_string(last) + ", seed " + std::to_string(seed));
    }
}

class InterruptedCreation : public testing::TestWithParam<jet::FileFormat> {
  protected:
    InterruptedCreation() : files_(GetParam() == jet::FileFormat::Jet3 ? 2048 : 4096) {}

    void create() {
        try {
            ItemSession::create(files_, path, GetParam());
        } catch (const base::Failure&) {
        }
    }

    /// Either no program takes the file for a database, or it is one, with none, one or both
    /// tables.
    void expectUsable(const std::string& when) {
        if (!files_.exists(path)) {
            return;
        }
        jet::Engine engine(files_);
        try {
            auto database = jet::Database::open(engine, path);
            const auto tables = database.tables();
            ASSERT_GE(tables.size(), 4u) << when;
            ASSERT_TRUE(jet::checkDatabase(files_, path).isIntact())
                << when << "\n"
                << textOf(jet::checkDatabase(files_, path));
            for (const auto& table : tables) {
                EXPECT_FALSE(database.table(table.name).fields.empty()) << when;
            }
            database.append({"third", {{"Id", jet::DataType::Long}}, {}});
            database.close();
            ASSERT_TRUE(jet::checkDatabase(files_, path).isSound())
                << when << "\n"
                << textOf(jet::checkDatabase(files_, path));
        } catch (const base::EngineFailure& failure) {
            EXPECT_TRUE(failure.fault() == base::EngineFault::NotADatabase)
                << when << failure.text();
        }
    }

    support::FaultyFiles files_;
};

TEST_P(InterruptedCreation, EveryWriteMayBeTheLast) {
    create();
    const std::uint64_t writes = files_.writes();
    ASSERT_GT(writes, 10u);
    for (std::uint64_t last = 1; last <= writes && !HasFatalFailure(); ++last) {
        files_ = support::FaultyFiles(files_.blockSize());
        files_.stopAtWrite = last;
        create();
        files_.heal();
        expectUsable("stopped at write " + std::to_string(last));
    }
}

TEST_P(InterruptedCreation, PowerMayFailAtAnyWrite) {
    create();
    const std::uint64_t writes = files_.writes();
    for (std::uint64_t last = 1; last <= writes; ++last) {
        for (std::uint64_t seed = 0; seed < 6 && !HasFatalFailure(); ++seed) {
            files_ = support::FaultyFiles(files_.blockSize());
            files_.stopAtWrite = last;
            create();
            files_.heal();
            files_.cutPower(seed);
            expectUsable("power cut at write " + std::to_string(last) + ", seed " +
                         std::to_string(seed));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, InterruptedCreation,
                         testing::Values(jet::FileFormat::Jet3, jet::FileFormat::Jet4),
                         [](const auto& format) {
                             return format.param == jet::FileFormat::Jet3 ? "Jet3" : "Jet4";
                         });

INSTANTIATE_TEST_SUITE_P(Work, Interruption, testing::ValuesIn(cases()), nameOf);

}  // namespace jet_test
