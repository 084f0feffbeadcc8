#pragma once

#include <map>
#include <memory>
#include <string>

namespace jet {

class DatabaseFile;

/// The files that an engine has open, by their identity (not by their path: a file may have
/// several, and a path may name another file tomorrow).
class FileRegistry {
  public:
    std::shared_ptr<DatabaseFile> find(const std::string& identity) {
        const auto known = files_.find(identity);
        return known == files_.end() ? nullptr : known->second.lock();
    }
    void remember(const std::string& identity, const std::shared_ptr<DatabaseFile>& file) {
        std::erase_if(files_, [](const auto& entry) { return entry.second.expired(); });
        files_[identity] = file;
    }

  private:
    std::map<std::string, std::weak_ptr<DatabaseFile>> files_;
};

}  // namespace jet
