#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/failure.h"
#include "jet/checker.h"
#include "jet/connection.h"
#include "jet/database.h"
#include "jet/engine.h"
#include "jet/recordset.h"
#include "tests/support/machine_files.h"
#include "tests/support/temporary_folder.h"

namespace jet_test {

inline std::string connectionText(const std::string& path) {
    return "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + path;
}

inline constexpr std::string_view generalLocale = ";LANGID=0x0409;CP=1252;COUNTRY=0";

/// The fault of the engine failure that `action` ends with; the test fails where there is none.
template <typename Action>
base::EngineFault faultOf(Action action, std::string* text = nullptr) {
    try {
        action();
    } catch (const base::EngineFailure& failure) {
        if (text != nullptr) {
            *text = failure.text();
        }
        return failure.fault();
    }
    ADD_FAILURE() << "no failure";
    return base::EngineFault::Usage;
}

/// An open recordset with its own connection.
struct OpenTable {
    OpenTable(jet::Engine& engine, const std::string& path, std::string_view table,
              jet::LockType lock = jet::LockType::Optimistic)
        : connection(engine) {
        connection.open(connectionText(path));
        rows.open(table, connection, jet::CursorType::Dynamic, lock, jet::CommandType::Table);
    }

    jet::Connection connection;
    jet::Recordset rows;
};

using Row = std::vector<jet::Value>;

/// All rows from the current one on.
inline std::vector<Row> remainingRows(jet::Recordset& set) {
    const int fields = static_cast<int>(set.definition().fields.size());
    std::vector<Row> rows;
    for (; !set.endOfFile(); set.moveNext()) {
        Row& row = rows.emplace_back();
        for (int field = 0; field < fields; ++field) {
            row.push_back(set.value(field));
        }
    }
    return rows;
}

/// Tests with an engine and a folder of their own. At the end of each, every database that it made
/// is checked page by page.
class EngineTest : public testing::Test {
  protected:
    void TearDown() override {
        for (const std::string& path : made) {
            const jet::CheckReport report = jet::checkDatabase(files, path);
            for (const jet::CheckFinding& finding : report.findings()) {
                ADD_FAILURE() << path << ": page " << finding.page << ": " << finding.text;
            }
        }
    }

    /// Makes a database with one table and closes it again; returns its path.
    std::string makeDatabase(jet::FileFormat format, const jet::TableDefinition& table,
                             const std::string& name = "test.mdb") {
        jet::CreateOptions options;
        options.format = format;
        const std::string path = folder.pathOf(name);
        jet::Database database = jet::Database::create(engine, path, generalLocale, options);
        database.append(table);
        database.close();
        made.push_back(path);
        return path;
    }

    std::vector<Row> allRows(const std::string& path, std::string_view table) {
        OpenTable open(engine, path, table, jet::LockType::ReadOnly);
        return remainingRows(open.rows);
    }

    void addRow(const std::string& path, std::string_view table, const Row& row) {
        OpenTable open(engine, path, table);
        open.rows.addNew();
        for (std::size_t i = 0; i < row.size(); ++i) {
            open.rows.setValue(static_cast<int>(i), row[i]);
        }
        open.rows.update();
    }

    support::TemporaryFolder folder;
    std::unique_ptr<base::FileOpener> opener = support::machineFiles();
    base::FileOpener& files = *opener;
    jet::Engine engine{files};
    std::vector<std::string> made;  ///< databases to be checked at the end
};

}  // namespace jet_test
