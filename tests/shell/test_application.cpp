#include "tests/shell/test_application.h"

#include <gtest/gtest.h>

namespace support {

shell::Application& testApplication() {
    return *static_cast<shell::Application*>(QCoreApplication::instance());
}

}  // namespace support

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    testing::InitGoogleTest(&argc, argv);
    const shell::Application application(argc, argv);
    return RUN_ALL_TESTS();
}
