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
    // "tst_x TestClass [qtest options]" runs only that class.
    const char *only = argc > 1 && argv[1][0] != '-' ? argv[1] : nullptr;
    std::vector<char *> args(argv, argv + argc);
    if (only)
        args.erase(args.begin() + 1);
    int failures = 0;
    for (const auto &make : tdstest::registry()) {
        std::unique_ptr<QObject> test(make());
        if (only && qstrcmp(test->metaObject()->className(), only) != 0)
            continue;
        failures += QTest::qExec(test.get(), int(args.size()), args.data());
    }
    return failures == 0 ? 0 : 1;
}
