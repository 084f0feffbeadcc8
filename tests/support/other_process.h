#pragma once

#include <functional>

namespace support {

/// Runs a function in a process of its own, a copy of this one; its result (0 to 254) is the exit
/// code. Only that process's own objects may be used there; it ends without running destructors of
/// others.
class OtherProcess {
  public:
    explicit OtherProcess(const std::function<int()>& run);
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;
    ~OtherProcess();

    /// Waits for its end; 255 when it did not end by itself or with an exception.
    int wait();
    /// Ends the calling process as a kill does: no destructor runs.
    [[noreturn]] static void endAtOnce(int code);

  private:
    int process_ = 0;
};

inline int inOtherProcess(const std::function<int()>& run) { return OtherProcess(run).wait(); }

}  // namespace support
