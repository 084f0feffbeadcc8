#include "cli/archive_files.h"

#include <filesystem>
#include <system_error>

#include "archive/data.h"
#include "archive/makedb.h"
#include "base/archive_location.h"
#include "base/failure.h"
#include "cli/context.h"
#include "jet/engine.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

/// Where a chain of links leads to, also when nothing is there yet.
fs::path withoutLinks(const std::string& path) {
    std::error_code error;
    if (!fs::is_symlink(path, error)) {
        return path;
    }
    const fs::path target = fs::weakly_canonical(path, error);
    return error ? fs::path(path) : target;
}

/// A name beside `path` that nothing has yet.
std::string nameBeside(const fs::path& path) {
    std::error_code error;
    for (int number = 1;; ++number) {
        std::string name = path.string() + ".new" + std::to_string(number);
        if (!fs::exists(fs::symlink_status(name, error))) {
            return name;
        }
    }
}

}  // namespace

bool isReplaceable(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    return !fs::exists(status) || fs::is_regular_file(status);
}

void createNewArchive(Context& context, const std::string& path, jet::FileFormat format) {
    std::error_code error;
    const bool wasThere = fs::exists(fs::symlink_status(path, error));
    try {
        archive::createArchive(context.engine, base::splitArchivePath(path), format);
    } catch (const base::Failure&) {
        if (!wasThere) {
            fs::remove(path, error);
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
    fs::rename(beside, place, error);
    if (error) {
        std::error_code ignored;
        fs::remove(beside, ignored);
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
