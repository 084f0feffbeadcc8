#pragma once

#include <memory>
#include <string>
#include <vector>

namespace support {

/// A program that runs beside this one. Its exit code (0 to 254) is its answer.
class OtherProcess {
  public:
    /// `command` is the program's path followed by its arguments.
    explicit OtherProcess(const std::vector<std::string>& command);
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;
    /// Waits for its end.
    ~OtherProcess();

    /// Waits for its end; 255 when it could not be started or did not end by itself.
    int wait();

  private:
    class Running;
    std::unique_ptr<Running> running_;
};

}  // namespace support
