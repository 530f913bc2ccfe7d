#pragma once
// Lets one executable run every Qt Test class of its folder.
#include <QObject>
#include <functional>
#include <vector>

namespace tdstest {
using Factory = std::function<QObject *()>;
std::vector<Factory> &registry();
struct Registrar {
    explicit Registrar(Factory f) { registry().push_back(std::move(f)); }
};
} // namespace tdstest

#define TDS_TEST(Class) \
    static tdstest::Registrar s_register_##Class([]() -> QObject * { return new Class; });
