#pragma once

#include "base/random_access_file.h"
#include "platform/windows/windows_api.h"

namespace platform::windows {

/// The lock of one open file against all other objects that have it open, here or in other
/// processes.
///
/// The system locks ranges of bytes, keeps everybody else from reading and writing there, and knows
/// no step from a shared lock to an exclusive one. So what is locked are two bytes far behind any
/// data, which need not exist: the lock itself, and a gate that is held only while a lock changes.
/// Nobody can come in between while the gate is shut, so a lock given up for another can be taken
/// back.
class FileLocks {
  public:
    using Lock = base::RandomAccessFile::Lock;

    /// The file stays the caller's and outlives this object.
    explicit FileLocks(HANDLE file) : file_(file) {}

    /// True when the lock is `wanted` now; false when somebody else stands in the way, and the lock
    /// is then as it was. Any other reason of the system is left in GetLastError(), with
    /// ERROR_SUCCESS in the ordinary case.
    bool tryChange(Lock wanted);

  private:
    enum class Wait { No, Yes };

    bool take(std::uint64_t byte, Lock lock, Wait wait) const;
    void release(std::uint64_t byte) const;
    bool changeBehindGate(Lock wanted);

    HANDLE file_;
    Lock held_ = Lock::None;
};

}  // namespace platform::windows
