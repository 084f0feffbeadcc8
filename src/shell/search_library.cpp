#include "shell/search_library.h"

#include <utility>

#include "base/failure.h"
#include "platform/platform.h"
#include "platform/program_file.h"

namespace shell {

namespace {

constexpr const char* libraryName = "libsearchcontrol";

template <typename Function>
Function* resolve(QLibrary& library, const char* name) {
    return reinterpret_cast<Function*>(library.resolve(name));
}

}  // namespace

SearchLibrary::SearchLibrary(search::SearchHost host) : host_(std::move(host)) {}

/// Why it cannot be used; empty where it can.
std::string SearchLibrary::load() {
    if (!library_.isLoaded()) {
        const std::string place = platform::programFile(host_.platform.shell(), {libraryName});
        library_.setFileName(QString::fromStdString(place));
        if (!library_.load()) {
            return library_.errorString().toStdString();
        }
    }
    auto* const version =
        resolve<decltype(verdolinSearchInterface)>(library_, "verdolinSearchInterface");
    if (version == nullptr || version() != search::searchInterface) {
        return library_.fileName().toStdString() + " belongs to another version of the program";
    }
    return {};
}

search::MadeControl SearchLibrary::makeControl() {
    try {
        std::string obstacle = load();
        if (!obstacle.empty()) {
            return {nullptr, std::move(obstacle)};
        }
        auto* const create =
            resolve<decltype(verdolinCreateSearchControl)>(library_, "verdolinCreateSearchControl");
        if (create == nullptr) {
            return {nullptr, library_.fileName().toStdString() + " holds no search component"};
        }
        return {create(&host_), {}};
    } catch (const base::Failure& failure) {
        return {nullptr, failure.text()};
    }
}

}  // namespace shell
