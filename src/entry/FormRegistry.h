#pragma once
// One row per statutory form: everything the component, the host's list, the command line
// and the tests need to know about it. Adding a form is a row here plus its own classes.
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

class FormLogic;
class QDialog;
class RecordTransfer;

struct FormDescriptor
{
    int number;                  // operation number in the interface (MyDllVersion is 0)
    const char *operation;       // "Form15C"
    const char *tag;             // error-log tag of the operation
    const char *caption;         // statutory name shown to the user
    const char *family;          // group in the host's list
    QDialog *(*window)();        // a new, not yet shown window; null: not in this version
    std::unique_ptr<FormLogic> (*logic)();   // the widget-free form; null: none yet
    const char *cliKey;          // "15c" for tdsforms-cli; null: not reachable there
    QStringList tables;          // the tables its rows live in
    // Import, export and print of single records by the command line; null: none.
    std::unique_ptr<RecordTransfer> (*transfer)() = nullptr;

    bool available() const { return window != nullptr; }
};

namespace FormRegistry {
// In interface order.
const std::vector<FormDescriptor> &all();
const FormDescriptor *byOperation(const QString &operation);
// Case-insensitive: "15C" finds "15c".
const FormDescriptor *byCliKey(const QString &key);
// "15c|15d|15i": the keys the command line accepts.
QString cliKeys();
} // namespace FormRegistry
