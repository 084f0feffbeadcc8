#include "tests/support/other_process.h"

#include "platform/windows/handle.h"
#include "platform/windows/native_path.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_api.h"

namespace support {

namespace {

using platform::windows::Handle;

constexpr int failed = 255;

}  // namespace

class OtherProcess::Running {
  public:
    explicit Running(const std::vector<std::string>& command) {
        std::wstring line = L'"' + platform::windows::nativePath(command.at(0)) + L'"';
        for (std::size_t i = 1; i < command.size(); ++i) {
            line += L" \"" + platform::windows::wideText(command[i]) + L'"';
        }
        STARTUPINFOW start{};
        start.cb = sizeof start;
        PROCESS_INFORMATION facts{};
        if (::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                             &start, &facts) != FALSE) {
            process_ = Handle(facts.hProcess);
            const Handle thread(facts.hThread);
        }
    }
    int wait() const {
        DWORD code = failed;
        if (process_.isOpen()) {
            ::WaitForSingleObject(process_.get(), INFINITE);
            ::GetExitCodeProcess(process_.get(), &code);
        }
        return code < failed ? static_cast<int>(code) : failed;
    }

  private:
    Handle process_;
};

OtherProcess::OtherProcess(const std::vector<std::string>& command)
    : running_(std::make_unique<Running>(command)) {}

OtherProcess::~OtherProcess() { wait(); }

int OtherProcess::wait() {
    const auto running = std::move(running_);
    return running ? running->wait() : failed;
}

}  // namespace support
