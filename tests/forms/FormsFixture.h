#pragma once
// Shared set-up of the forms tests: a fresh database with one deductor selected, the real
// data object and (unless a test installs the recorder) the real report object.
#include "TestDatabase.h"
#include "forms/Form15CDLogic.h"
#include "forms/Form15ILogic.h"
#include "host/IDataObject.h"
#include "host/ServiceRegistry.h"
#include "shared/modbase.h"

#include <QStringList>
#include <QTest>

namespace FormsFixture {

inline const QString deductor = QStringLiteral("D15");

// Deductor D15: the bank "O'NEIL BANK LTD", its principal officer and his address.
inline bool addDeductor(IDataObject &d)
{
    return d.ConQuery(QStringLiteral(
               "Insert into Main_Info (Code_No, Name, Tanno, panno, city, Resp_Name, Resp_FName, Resp_Flat, "
               "Resp_Street, Resp_City, Resp_PIN, FormPlace, FormDate) Values ('D15', 'O''NEIL BANK LTD', "
               "'MUMO12345A', 'AAACO1234B', 'MUMBAI', 'RAVI KUMAR', 'SURESH KUMAR', '12 HILL VIEW', "
               "'MG ROAD', 'PUNE', '411001', 'PUNE', '15/06/2024')"))
        && d.ConQuery(QStringLiteral("Insert into Main_Info_oth (code_no, Name, ward) Values ('D15', "
                                     "'O''NEIL BANK LTD', 'WARD 3(2)')"));
}

// Starts the services on a fresh database and selects D15 for 2024-25.
inline bool start(QString *error)
{
    if (!TestDatabase::setUp(error))
        return false;
    ServiceRegistry::registerBuiltins();
    modbase::resetForTests();
    if (!modbase::Main()) {
        *error = modbase::mainError();
        return false;
    }
    IDataObject *d = modbase::dataObject();
    if ((!d->isConnected() && !d->connect()) || !addDeductor(*d)) {
        *error = d->lastError();
        return false;
    }
    d->setCodeno(deductor);
    d->setAsYear(QStringLiteral("2024-25"));
    return true;
}

inline QStringList rows(const QString &sql)
{
    return TestDatabase::rows(*modbase::dataObject(), sql);
}

// Loads the stored form "15c", "15d" or "15i", types `fields` over it (15I: registration and date
// of line 1, then of line 2) and hands it to `action`.
template<typename Action>
void withForm(const QString &form, const QStringList &fields, Action action)
{
    if (form == QLatin1String("15i")) {
        Form15ILogic f;
        f.load();
        for (int i = 0; i < fields.size(); ++i) {
            if (i % 2)
                f.setRegistrationDate(i / 2 + 1, fields[i]);
            else
                f.setRegistration(i / 2 + 1, fields[i]);
        }
        action(f);
        return;
    }
    Form15CDLogic f(form == QLatin1String("15c") ? Form15CDLogic::Kind::C : Form15CDLogic::Kind::D);
    f.load();
    for (int i = 0; i < fields.size(); ++i)
        f.setField(i, fields[i]);
    action(f);
}

} // namespace FormsFixture

#define FORMS_START()                                   \
    do {                                                \
        QString formsError_;                            \
        if (!FormsFixture::start(&formsError_))         \
            QFAIL(qPrintable(formsError_));             \
    } while (false)
