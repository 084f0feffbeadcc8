#include "cli/archive_files.h"

#include <filesystem>
#include <system_error>

#include "archive/data.h"
#include "archive/makedb.h"
#include "base/archive_location.h"
#include "base/failure.h"
#include "base/file_path.h"
#include "cli/context.h"
#include "jet/engine.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

/// Where a chain of links leads to, also when nothing is there yet.
fs::path withoutLinks(const std::string& path) {
    fs::path given = base::filePath(path);
    std::error_code error;
    if (!fs::is_symlink(given, error)) {
        return given;
    }
    fs::path target = fs::weakly_canonical(given, error);
    return error ? given : target;
}

/// A name beside `path` that nothing has yet.
std::string nameBeside(const fs::path& path) {
    std::error_code error;
    for (int number = 1;; ++number) {
        std::string name = base::pathText(path) + ".new" + std::to_string(number);
        if (!fs::exists(fs::symlink_status(base::filePath(name), error))) {
            return name;
        }
    }
}

}  // namespace

bool isReplaceable(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(base::filePath(path), error);
    return !fs::exists(status) || fs::is_regular_file(status);
}

void createNewArchive(Context& context, const std::string& path, jet::FileFormat format) {
    std::error_code error;
    const bool wasThere = fs::exists(fs::symlink_status(base::filePath(path), error));
    try {
        archive::createArchive(context.engine, base::splitArchivePath(path), format);
    } catch (const base::Failure&) {
        if (!wasThere) {
            fs::remove(base::filePath(path), error);
        }
        throw;
    }
}

void replaceArchive(Context& context, const std::string& path, jet::FileFormat format) {
    if (!isReplaceable(path)) {
        throw base::FileFailure(path + ": this is a folder or device, which is not replaced");
    }
    const fs::path place = withoutLinks(path);
    const std::string beside = nameBeside(place);
    createNewArchive(context, beside, format);
    std::error_code error;
    fs::rename(base::filePath(beside), place, error);
    if (error) {
        std::error_code ignored;
        fs::remove(base::filePath(beside), ignored);
        throw base::FileFailure(path + ": it cannot be replaced: " + error.message());
    }
}

void openExisting(jet::Connection& connection, const base::ArchiveLocation& archive) {
    try {
        connection.open(archive::connectionString(archive));
    } catch (const base::EngineFailure& failure) {
        if (failure.fault() == base::EngineFault::NotFound) {
            throw base::EngineFailure(
                failure.fault(),
                archive.fullPath() + ": there is no such archive; \"vdln create\" creates one");
        }
        throw;
    }
}

}  // namespace cli
