#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/directory_lister.h"
#include "platform/drives.h"
#include "platform/private_profile.h"

// The parts of the machine that the tests run on, for the tests of what holds on every machine.
// Each system brings its own.

namespace platform {

using RootOf = std::function<std::optional<std::string>(char letter)>;

/// A way in which the machine's lister may be set up.
struct ListerForm {
    const char* name;
    std::function<std::unique_ptr<DirectoryLister>(RootOf rootOf)> make;
};

std::vector<ListerForm> machineListers();
std::unique_ptr<Drives> machineDrives(PrivateProfile& profile, const std::string& settingsFilePath);
std::unique_ptr<PrivateProfile> machineProfile();

}  // namespace platform
