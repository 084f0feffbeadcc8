#include "jet/engine.h"

#include "base/random_access_file.h"
#include "jet/database_file.h"
#include "jet/file_access.h"
#include "jet/file_registry.h"

namespace jet {

Engine::Engine(base::FileOpener& files, EngineOptions options)
    : files_(files), options_(options), registry_(std::make_unique<FileRegistry>()) {}

Engine::~Engine() = default;

std::shared_ptr<DatabaseFile> Engine::openFile(const std::string& path) {
    auto opened = openExisting(files_, path, true);
    const std::string identity = opened->identity();
    if (auto known = registry_->find(identity)) {
        return known;
    }
    auto file = DatabaseFile::open(files_, std::move(opened), path, options_);
    registry_->remember(identity, file);
    return file;
}

}  // namespace jet
