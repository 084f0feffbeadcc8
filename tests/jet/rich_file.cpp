#include "tests/jet/rich_file.h"

#include "base/failure.h"
#include "jet/connection.h"
#include "jet/engine.h"
#include "jet/recordset.h"
#include "tests/jet/item_table.h"

namespace jet_test {

namespace {

jet::TableDefinition allTypes() {
    using enum jet::DataType;
    return {"all types",
            {{"Number", Long, 0, false, false, true},
             {"Truth", Boolean},
             {"Small", Byte},
             {"Short", Integer},
             {"Money", Currency},
             {"Float", Single},
             {"Real", Double},
             {"Day", Date},
             {"Bytes", Binary, 40},
             {"Name", Text, 80, true, false},
             {"Picture", LongBinary},
             {"Story", Memo, 0, true, false},
             {"Key", Guid},
             {"Sum", Numeric, 0, false, false, false, 18, 4}},
            {}};
}

jet::TableDefinition manyColumns() {
    jet::TableDefinition table{"many", {}, {}};
    for (int i = 0; i < 120; ++i) {
        table.fields.push_back({"Column number " + std::to_string(i),
                                i % 3 == 0 ? jet::DataType::Long : jet::DataType::Text, 0});
        table.fields.back().size = i % 3 == 0 ? 0 : 20;
    }
    return table;
}

class Filler {
  public:
    Filler(jet::Engine& engine, const std::string& path) : connection_(engine) {
        connection_.open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + path);
    }

    void fillAllTypes() {
        open("all types");
        for (std::uint32_t i = 0; i < 40; ++i) {
            rows_.addNew();
            if (i % 7 != 0) {
                setAll(i);
            }
            rows_.update();
        }
        // Some rows outgrow their pages, some go.
        for (rows_.moveFirst(); !rows_.endOfFile(); rows_.moveNext()) {
            const std::int32_t number = rows_.integer(0);
            if (number % 5 == 0) {
                rows_.setText(9, someText(static_cast<std::uint32_t>(number), 80));
                rows_.setValue(8, jet::Binary{std::string(40, '\x7F')});
                rows_.setText(11, someText(static_cast<std::uint32_t>(number), 30));
                rows_.update();
            } else if (number % 11 == 0) {
                rows_.deleteCurrent();
            }
        }
    }

    void fillMany() {
        open("many");
        for (int i = 0; i < 12; ++i) {
            rows_.addNew();
            for (int column = 0; column < 120; column += 1 + i) {
                rows_.setInteger(column, i * column);
            }
            rows_.update();
        }
    }

    void close() {
        rows_.close();
        connection_.close();
    }

  private:
    void open(const char* table) {
        rows_.open(table, connection_, jet::CursorType::Dynamic, jet::LockType::Optimistic,
                   jet::CommandType::Table);
    }

    void setAll(std::uint32_t i) {
        rows_.setValue(1, i % 2 == 0);
        rows_.setInteger(2, i);
        rows_.setInteger(3, -static_cast<std::int64_t>(i) * 300);
        rows_.setValue(4, jet::Currency{static_cast<std::int64_t>(i) * 12345});
        rows_.setValue(5, static_cast<float>(i) / 3);
        rows_.setValue(6, static_cast<double>(i) / 7);
        rows_.setValue(7, jet::Date{37753.4375 + i});
        rows_.setValue(8, jet::Binary{std::string(i, 'b')});
        rows_.setText(9, i % 4 == 0 ? "\xD0\x96\xD0\xB0.txt" : someText(i, i));
        rows_.setValue(10, jet::Binary{std::string(i % 16 == 9 ? 9000 : i * 17, 'p')});
        rows_.setText(11, someText(i, i % 16 == 10 ? 7001 : i * 5));
        rows_.setValue(12, jet::Guid{{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}});
        jet::Numeric sum;
        sum.magnitude[15] = static_cast<std::uint8_t>(i);
        sum.scale = 4;
        rows_.setValue(13, sum);
    }

    jet::Connection connection_;
    jet::Recordset rows_;
};

}  // namespace

void makeRichFile(base::FileOpener& files, const std::string& path, jet::FileFormat format) {
    jet::Engine engine(files);
    jet::CreateOptions options;
    options.format = format;
    options.creationDate = 37753.4375;
    auto database =
        jet::Database::create(engine, path, ";LANGID=0x0409;CP=1252;COUNTRY=0", options);
    database.append(allTypes());
    database.append(manyColumns());
    database.append({"empty", {{"Id", jet::DataType::Long}}, {}});
    database.close();
    Filler filler(engine, path);
    filler.fillAllTypes();
    filler.fillMany();
    filler.close();
}

std::size_t readEverything(base::FileOpener& files, const std::string& path) {
    jet::Engine engine(files, {.pageCacheBytes = 1});
    auto database = jet::Database::open(engine, path);
    std::size_t values = 0;
    for (const jet::TableSummary& table : database.tables()) {
        const jet::TableDefinition definition = database.table(table.name);
        jet::Connection connection(engine);
        connection.open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + path);
        jet::Recordset rows;
        rows.open(table.name, connection, jet::CursorType::ForwardOnly, jet::LockType::ReadOnly,
                  jet::CommandType::Table);
        for (; !rows.endOfFile(); rows.moveNext()) {
            for (int field = 0; field < static_cast<int>(definition.fields.size()); ++field) {
                values += rows.text(field).size() + 1;
            }
        }
    }
    return values;
}

void changeEverything(base::FileOpener& files, const std::string& path) {
    jet::Engine engine(files, {.pageCacheBytes = 1});
    auto database = jet::Database::open(engine, path);
    for (const jet::TableSummary& table : database.tables()) {
        try {
            jet::Connection connection(engine);
            connection.open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + path);
            jet::Recordset rows;
            rows.open(table.name, connection, jet::CursorType::Dynamic, jet::LockType::Optimistic,
                      jet::CommandType::Table);
            const auto& fields = rows.definition().fields;
            for (int row = 0; !rows.endOfFile() && row < 30; ++row, rows.moveNext()) {
                if (row % 3 == 0) {
                    rows.deleteCurrent();
                    continue;
                }
                for (std::size_t field = 0; field < fields.size(); ++field) {
                    if (fields[field].type == jet::DataType::Memo ||
                        fields[field].type == jet::DataType::Text) {
                        rows.setText(static_cast<int>(field), "changed");
                    }
                }
                rows.update();
            }
            for (int row = 0; row < 5; ++row) {
                rows.addNew();
                for (std::size_t field = 0; field < fields.size(); ++field) {
                    if (fields[field].type == jet::DataType::Long) {
                        rows.setInteger(static_cast<int>(field), row);
                    }
                }
                rows.update();
            }
            connection.close();
        } catch (const base::EngineFailure&) {
            // A damaged table is refused; the next one may be sound.
        }
    }
    database.append({"one more", {{"Id", jet::DataType::Long}}, {}});
    database.close();
}

}  // namespace jet_test
