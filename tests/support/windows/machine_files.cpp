#include "tests/support/machine_files.h"

#include "platform/windows/windows_file_opener.h"

namespace support {

std::unique_ptr<base::FileOpener> machineFiles() {
    return std::make_unique<platform::windows::WindowsFileOpener>();
}

}  // namespace support
