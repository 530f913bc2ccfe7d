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

    // Any operation by its name ("Form15C"); nothing (logged) when it has no form here.
    QDialog *open(const QString &operation);

    // Objects of the component alive now (Forms instances and the windows they returned).
    static int liveObjects();

private:
    Forms();
};
