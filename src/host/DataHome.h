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

// The embedded database folder as found before the server starts on it.
enum class DbState {
    Empty,        // nothing yet: the server builds it
    Complete,     // "tdsforms.complete": built to the end
    HoldsData,    // no marker, but table files in a schema folder (an earlier version's)
    Unfinished,   // "tdsforms.building" without "tdsforms.complete", or server files without
                  // any table: a first start that was killed
};
DbState inspectDb(const QString &dir);
QString dbCompleteMarker(const QString &dir);
QString dbBuildingMarker(const QString &dir);
// Written before the server first starts on an empty folder.
bool markDbBuilding(const QString &dir, QString *error = nullptr);
// Written once the tables exist, before anything can be stored in them.
bool markDbComplete(const QString &dir, QString *error = nullptr);
// An unfinished folder is moved aside (never deleted) to "<dir>.unfinished-<time>" and an
// empty one put in its place; *movedTo says where it went, empty when nothing moved.
// Folders in any other state are left exactly as they are.
bool recoverUnfinishedDb(const QString &dir, QString *movedTo, QString *error = nullptr);

} // namespace DataHome
