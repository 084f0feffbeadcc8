#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace platform::posix {

/// Type descriptions of files by their names, from the desktop's shared database of file types, in
/// English. A file is never read for it. Answers are remembered by extension, so that asking for
/// every name of a large tree costs next to nothing.
class TypeNames {
  public:
    TypeNames();
    ~TypeNames();
    TypeNames(const TypeNames&) = delete;
    TypeNames& operator=(const TypeNames&) = delete;

    /// The description of a file of that name (UTF-8, without its path), at most 80 characters.
    /// Good until the next call.
    std::string_view ofFile(std::string_view name);

  private:
    class Database;
    std::unique_ptr<Database> database_;
};

}  // namespace platform::posix
