#pragma once
// What the host does before its window opens: options, services, database, demo data.
#include "entry/Forms.h"
#include "shared/modbase.h"

#include <QStringList>
#include <memory>

namespace HostStartup {
// Options: --home DIR, --db URL. Registers the services, creates the component, connects,
// and on a database without deductors loads the demo deductor and selects it.
// Nothing, and *error says why, when any step fails.
std::unique_ptr<Forms> start(const QStringList &arguments, QString *error);
} // namespace HostStartup
