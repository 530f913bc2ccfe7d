#pragma once
// The component's one public class: one operation per statutory form, each returning a new
// window that the host shows modally and deletes when it closes.
#include <QDialog>
#include <QString>
#include <memory>
#include <vector>

class Forms
{
public:
    // Runs modbase::Main() the first time; nothing (and *error says why) when the data
    // object or the report object cannot be created.
    static std::unique_ptr<Forms> create(QString *error = nullptr);
    ~Forms();
    Forms(const Forms &) = delete;
    Forms &operator=(const Forms &) = delete;

    QString MyDllVersion() const;          // the literal the host checks, not the file version
    static QString componentVersion();     // the same literal, without an object
    static QString fileVersion();          // the library's own version

    QDialog *Form15H();
    QDialog *Form15HNew();
    QDialog *Form15HNew1();
    QDialog *Form15I();
    QDialog *Form15J();
    QDialog *Challan();
    QDialog *ChallanNew();
    QDialog *Form15C();
    QDialog *Form15D();
    QDialog *Form15G();
    QDialog *Form15GNew();
    QDialog *Form15GNew1();
    QDialog *Form13New();
    QDialog *Form13Old();
    QDialog *Form26QA();
    QDialog *Form26QAA();
    QDialog *Form27C();
    QDialog *Form27CNew();
    QDialog *Form49B();
    QDialog *Form49BCH();
    QDialog *FormEPayITD();

    // The form operations in interface order (MyDllVersion, number 0, is not among them).
    struct Operation {
        const char *name;       // operation name, e.g. "Form15C"
        const char *tag;        // error-log tag, e.g. "Form15C"
        const char *caption;    // statutory name shown to the user
        const char *family;     // group in the host's list
        QDialog *(Forms::*call)();
        QDialog *(*factory)();  // nothing when the form is not built into this version
    };
    static const std::vector<Operation> &operations();

    // Objects of the component alive now (Forms instances and the windows they returned).
    static int liveObjects();

private:
    Forms();
    QDialog *make(const char *operationName);
};
