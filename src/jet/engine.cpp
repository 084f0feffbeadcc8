#include "jet/engine.h"

#include "base/failure.h"
#include "base/random_access_file.h"
#include "jet/database_file.h"
#include "jet/file_registry.h"

namespace jet {

namespace {

using base::FileOpener;

[[noreturn]] void refuse(const std::string& path, const FileOpener::Opened& opened) {
    using base::EngineFault;
    switch (opened.refusal) {
        case FileOpener::Refusal::NotFound:
            throw base::EngineFailure(EngineFault::NotFound, path + ": there is no such file");
        case FileOpener::Refusal::NotAFile:
            throw base::EngineFailure(EngineFault::NotADatabase,
                                      path + ": this is a folder or device, not a database file");
        default:
            throw base::EngineFailure(EngineFault::InputOutput,
                                      path + ": the file cannot be opened: " + opened.reason);
    }
}

}  // namespace

Engine::Engine(base::FileOpener& files, EngineOptions options)
    : files_(files), options_(options), registry_(std::make_unique<FileRegistry>()) {}

Engine::~Engine() = default;

std::shared_ptr<DatabaseFile> Engine::openFile(const std::string& path) {
    FileOpener::Opened opened = files_.open(path, FileOpener::Mode::ReadWrite);
    if (opened.refusal == FileOpener::Refusal::NotWritable ||
        opened.refusal == FileOpener::Refusal::NoAccess) {
        opened = files_.open(path, FileOpener::Mode::Read);
    }
    if (opened.file == nullptr) {
        refuse(path, opened);
    }
    const std::string identity = opened.file->identity();
    if (auto known = registry_->find(identity)) {
        return known;
    }
    auto file = DatabaseFile::open(files_, std::move(opened.file), path, options_);
    registry_->remember(identity, file);
    return file;
}

}  // namespace jet
