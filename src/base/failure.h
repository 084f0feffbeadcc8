#pragma once

#include <exception>
#include <string>
#include <utility>

namespace base {

/// Root of the one exception family of the program. A failure is thrown where the fact is known,
/// with a text made there ("what: why"), and passes every layer untouched up to the boundary of the
/// event loop or of the companion's main(). What a caller must handle to work properly (end of a
/// table, a folder that cannot be listed) is a return value instead.
class Failure : public std::exception {
  public:
    const char* what() const noexcept override { return text_.c_str(); }
    /// The same text as what(), UTF-8, without a final full stop.
    const std::string& text() const noexcept { return text_; }

  protected:
    explicit Failure(std::string text) : text_(std::move(text)) {}

  private:
    std::string text_;
};

/// What went wrong inside the database engine, in the few kinds that a caller or a user acts on.
enum class EngineFault {
    NotFound,      ///< no such file, table or field
    NotADatabase,  ///< the file is something else, or a version that is not supported
    Encoded,       ///< the pages are encoded
    Password,      ///< the database has a password
    Damaged,       ///< the bytes contradict the format; the text names page and cause
    ReadOnly,      ///< the file may not be written
    InUse,         ///< another program holds the file
    Indexed,       ///< a write would have to keep an index that this engine does not write
    Full,          ///< the format's size limit or the disk is reached
    Exists,        ///< a file or table of that name is there already
    Value,  ///< a value does not fit its field, or a record its page; the text names the field
    NoCurrentRow,  ///< a field was read or a row changed where no current row is
    Usage,  ///< the call makes no sense in this state (closed, opened for reading, bad filter)
    InputOutput,  ///< the operating system refused to read or write
};

/// A failure of the database engine.
class EngineFailure : public Failure {
  public:
    EngineFailure(EngineFault fault, std::string text) : Failure(std::move(text)), fault_(fault) {}
    EngineFault fault() const noexcept { return fault_; }

  private:
    EngineFault fault_;
};

/// A whole number left the range of its 16- or 32-bit type.
class OverflowFailure : public Failure {
  public:
    explicit OverflowFailure(std::string text) : Failure(std::move(text)) {}
};

/// A list was asked for an element or for bounds that it does not have.
class SubscriptFailure : public Failure {
  public:
    explicit SubscriptFailure(std::string text) : Failure(std::move(text)) {}
};

/// An operation was called with an argument that it cannot work on.
class InvalidArgumentFailure : public Failure {
  public:
    explicit InvalidArgumentFailure(std::string text) : Failure(std::move(text)) {}
};

/// A file, folder, drive or other service of the machine failed.
class FileFailure : public Failure {
  public:
    explicit FileFailure(std::string text) : Failure(std::move(text)) {}
};

}  // namespace base
