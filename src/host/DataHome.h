#pragma once
// The data home (ExePath): $TDSFORMS_HOME, else $XDG_DATA_HOME/tdsforms (default
// ~/.local/share/tdsforms). Holds Data/ (templates, section file), Temp/, db/ (the embedded
// database) and ZeltLogger.log.
#include <QString>

namespace DataHome {

// The CLI's --home and the tests: used instead of the environment. Empty clears it.
void setOverride(const QString &dir);
QString overrideDir();

QString path();        // ExePath, no trailing slash
QString dataPath();    // path() + "/Data"
QString tempPath();    // vTmpPath: path() + "/Temp/", with the trailing slash
QString dbPath();      // path() + "/db"
// DocPath: ($XDG_DOCUMENTS_DIR or the user's documents folder) + "/TDSForms", created on use.
QString docPath();

// Creates the folders and copies the starting files (resources under ":/data/seed/") that
// Data/ does not have yet. False and *error when a folder cannot be created.
bool ensure(QString *error = nullptr);
// Copies every file below sourceRoot into target where target lacks it; returns how many.
int seed(const QString &sourceRoot, const QString &target);

} // namespace DataHome
