// The other process of the tests of two: opens table "numbers" of a database, reads or adds rows,
// and tells by its exit code what came of it.
//
//   jet_visitor PATH read|write|"be killed" MILLISECONDS

#include <cstdlib>
#include <string>

#include "base/failure.h"
#include "tests/jet/engine_fixture.h"

namespace jet_test {

namespace {

constexpr int inUse = 100;
constexpr int otherFailure = 101;
constexpr int wrongUsage = 102;

void addNumber(OpenTable& open, int number) {
    open.rows.addNew();
    open.rows.setInteger(0, number);
    open.rows.update();
}

/// Ends the process in the middle of its work; no destructor runs.
[[noreturn]] void addAndBeKilled(OpenTable& open) {
    constexpr int killed = 7;
    addNumber(open, 1);
    open.connection.flush();
    addNumber(open, 2);
    std::_Exit(killed);
}

int perform(const std::string& work, OpenTable& open) {
    if (work == "read") {
        return static_cast<int>(remainingRows(open.rows).size());
    }
    if (work == "be killed") {
        addAndBeKilled(open);
    }
    addNumber(open, 1);
    open.connection.close();
    return 0;
}

int visit(const std::string& path, const std::string& work, int waitMilliseconds) {
    const auto files = support::machineFiles();
    jet::Engine engine(*files, {.lockWaitMilliseconds = waitMilliseconds});
    try {
        OpenTable open(engine, path, "numbers");
        return perform(work, open);
    } catch (const base::EngineFailure& failure) {
        return failure.fault() == base::EngineFault::InUse ? inUse : otherFailure;
    }
}

}  // namespace

}  // namespace jet_test

int main(int count, char** arguments) {
    if (count != 4) {
        return jet_test::wrongUsage;
    }
    return jet_test::visit(arguments[1], arguments[2], std::atoi(arguments[3]));
}
