#include "tests/support/machine_files.h"

#include "platform/posix/posix_file_opener.h"

namespace support {

std::unique_ptr<base::FileOpener> machineFiles() {
    return std::make_unique<platform::posix::PosixFileOpener>();
}

}  // namespace support
