#include "jet/database.h"

#include <chrono>
#include <utility>

#include "base/failure.h"
#include "base/random_access_file.h"
#include "jet/database_creator.h"
#include "jet/database_file.h"
#include "jet/engine.h"
#include "jet/field_codec.h"
#include "jet/property_block.h"
#include "jet/row_scanner.h"
#include "jet/table_creator.h"

namespace jet {

namespace {

using base::EngineFailure;
using base::EngineFault;
using base::FileOpener;

constexpr std::string_view generalLocale = ";LANGID=0x0409;CP=1252;COUNTRY=0";

/// The present moment in UTC as days since 1899-12-30, whole seconds.
double dateOfNow() {
    constexpr double epochDays = 25569;  // 1899-12-30 to 1970-01-01
    const auto now =
        std::chrono::time_point_cast<std::chrono::seconds>(std::chrono::system_clock::now());
    return epochDays + static_cast<double>(now.time_since_epoch().count()) / 86400.0;
}

std::unique_ptr<base::RandomAccessFile> createFile(FileOpener& files, const std::string& path) {
    FileOpener::Opened opened = files.open(path, FileOpener::Mode::CreateNew);
    if (opened.refusal == FileOpener::Refusal::Exists) {
        throw EngineFailure(EngineFault::Exists, path + ": there is a file of that name already");
    }
    if (opened.file == nullptr) {
        throw EngineFailure(EngineFault::InputOutput,
                            path + ": the file cannot be created: " + opened.reason);
    }
    return std::move(opened.file);
}

void writeAll(base::RandomAccessFile& file, std::uint64_t offset,
              const std::vector<std::uint8_t>& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        done += file.writeAt(offset + done, bytes.data() + done, bytes.size() - done);
    }
}

/// The header goes last, so that a file that was not finished is no database.
void writePages(base::RandomAccessFile& file, const std::vector<std::vector<std::uint8_t>>& pages) {
    const std::uint64_t pageSize = pages.front().size();
    for (std::size_t i = 1; i < pages.size(); ++i) {
        writeAll(file, i * pageSize, pages[i]);
    }
    file.sync();
    writeAll(file, 0, pages.front());
    file.sync();
}

}  // namespace

Database::Database(std::shared_ptr<DatabaseFile> file) : file_(std::move(file)) {
    file_->addUser();
}
Database::Database(Database&&) noexcept = default;
Database& Database::operator=(Database&& other) noexcept {
    std::swap(file_, other.file_);
    std::swap(objectDate_, other.objectDate_);
    return *this;
}

Database::~Database() {
    try {
        close();
    } catch (const base::Failure&) {
        // Whoever wants to know calls close().
    }
}

Database Database::create(Engine& engine, const std::string& path, std::string_view locale,
                          const CreateOptions& options) {
    if (locale != generalLocale) {
        throw EngineFailure(EngineFault::Usage, "the locale " + std::string(locale) +
                                                    " is not supported, only " +
                                                    std::string(generalLocale));
    }
    const double fileDate = options.creationDate.value_or(dateOfNow());
    const Format& format = options.format == FileFormat::Jet4 ? jet4Format : jet3Format;
    DatabaseCreator creator(format, fileDate, options.objectDate.value_or(fileDate),
                            options.engineBuild);
    const auto pages = creator.build();
    {
        const std::unique_ptr<base::RandomAccessFile> file = createFile(engine.files(), path);
        writePages(*file, pages);
    }
    Database database = open(engine, path);
    database.objectDate_ = options.objectDate.value_or(fileDate);
    return database;
}

Database Database::open(Engine& engine, const std::string& path) {
    return Database(engine.openFile(path));
}

DatabaseFile& Database::file() const {
    if (file_ == nullptr) {
        throw EngineFailure(EngineFault::Usage, "the database is closed");
    }
    return *file_;
}

void Database::append(const TableDefinition& table) {
    TableCreator(file(), objectDate_.value_or(dateOfNow())).create(table);
}

FileFormat Database::format() const { return file().format().kind; }

std::vector<TableSummary> Database::tables() const {
    std::vector<TableSummary> summaries;
    for (const CatalogEntry& entry : std::vector<CatalogEntry>(file().catalog())) {
        summaries.push_back({entry.name, file().table(entry.name).rowCount(), entry.isSystem()});
    }
    return summaries;
}

TableDefinition Database::table(std::string_view name) const {
    Table& table = file().table(name);
    TableDefinition definition = table.stored().definition();
    Table& objects = file().systemObjects();
    const FieldCodec codec(file(), objects);
    const TableDefinition catalog = objects.stored().definition();
    const int id = catalog.find("Id");
    const int properties = catalog.find("LvProp");
    if (id < 0 || properties < 0) {
        return definition;
    }
    for (RowScanner scanner(file(), objects); scanner.next();) {
        if (codec.integer(static_cast<std::size_t>(id), scanner.row()) !=
            static_cast<std::int32_t>(table.stored().page())) {
            continue;
        }
        const Value block = codec.value(static_cast<std::size_t>(properties), scanner.row());
        if (const Binary* const bytes = std::get_if<Binary>(&block)) {
            PropertyBlock::apply(file().format(), bytes->bytes, definition);
        }
        break;
    }
    return definition;
}

void Database::close() {
    if (const std::shared_ptr<DatabaseFile> file = std::exchange(file_, nullptr)) {
        file->removeUser();
    }
}

}  // namespace jet
