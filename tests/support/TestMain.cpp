#include "TestRegistry.h"

#include <QApplication>
#include <QTest>
#include <memory>

namespace tdstest {
std::vector<Factory> &registry()
{
    static std::vector<Factory> r;
    return r;
}
} // namespace tdstest

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    int failures = 0;
    for (const auto &make : tdstest::registry()) {
        std::unique_ptr<QObject> test(make());
        failures += QTest::qExec(test.get(), argc, argv);
    }
    return failures == 0 ? 0 : 1;
}
