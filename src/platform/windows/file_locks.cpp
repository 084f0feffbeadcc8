#include "platform/windows/file_locks.h"

namespace platform::windows {

namespace {

constexpr std::uint64_t lockByte = std::uint64_t{1} << 62;
constexpr std::uint64_t gateByte = lockByte + 1;

OVERLAPPED placeOf(std::uint64_t byte) {
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(byte);
    place.OffsetHigh = static_cast<DWORD>(byte >> 32);
    return place;
}

}  // namespace

bool FileLocks::take(std::uint64_t byte, Lock lock, Wait wait) const {
    OVERLAPPED place = placeOf(byte);
    const DWORD flags = (lock == Lock::Exclusive ? LOCKFILE_EXCLUSIVE_LOCK : 0U) |
                        (wait == Wait::No ? LOCKFILE_FAIL_IMMEDIATELY : 0U);
    if (::LockFileEx(file_, flags, 0, 1, 0, &place) != 0) {
        return true;
    }
    const DWORD reason = ::GetLastError();
    const bool inTheWay = reason == ERROR_LOCK_VIOLATION || reason == ERROR_IO_PENDING;
    ::SetLastError(inTheWay ? ERROR_SUCCESS : reason);
    return false;
}

void FileLocks::release(std::uint64_t byte) const {
    OVERLAPPED place = placeOf(byte);
    ::UnlockFileEx(file_, 0, 1, 0, &place);
}

bool FileLocks::tryChange(Lock wanted) {
    if (wanted == held_) {
        return true;
    }
    if (wanted == Lock::None) {
        release(lockByte);
        held_ = wanted;
        return true;
    }
    // Giving up an exclusive lock for a shared one is always granted; who stands at the gate then
    // finds the lock taken and goes.
    const bool steppingDown = held_ == Lock::Exclusive;
    const Lock gate = held_ == Lock::None ? wanted : Lock::Exclusive;
    if (!take(gateByte, gate, steppingDown ? Wait::Yes : Wait::No)) {
        return false;
    }
    const bool done = changeBehindGate(wanted);
    const DWORD reason = ::GetLastError();
    release(gateByte);
    ::SetLastError(reason);
    return done;
}

bool FileLocks::changeBehindGate(Lock wanted) {
    if (held_ != Lock::None) {
        release(lockByte);
    }
    if (take(lockByte, wanted, Wait::No)) {
        held_ = wanted;
        return true;
    }
    if (held_ != Lock::None) {
        const DWORD reason = ::GetLastError();
        take(lockByte, held_, Wait::Yes);
        ::SetLastError(reason);
    }
    return false;
}

}  // namespace platform::windows
