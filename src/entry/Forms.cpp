#include "entry/Forms.h"

#include "forms/FormFactory.h"
#include "shared/modbase.h"

#include <QAtomicInt>

namespace {
QAtomicInt g_live;
} // namespace

std::unique_ptr<Forms> Forms::create(QString *error)
{
    if (!modbase::Main()) {
        if (error)
            *error = modbase::mainError();
        return nullptr;
    }
    return std::unique_ptr<Forms>(new Forms);
}

Forms::Forms()
{
    g_live.ref();
}

Forms::~Forms()
{
    g_live.deref();
}

int Forms::liveObjects()
{
    return g_live.loadRelaxed();
}

QString Forms::MyDllVersion() const
{
    return componentVersion();
}

QString Forms::componentVersion()
{
    return QStringLiteral("2.26.5.2");
}

QString Forms::fileVersion()
{
    return QStringLiteral(TDS_FILE_VERSION);
}

QDialog *Forms::make(const char *operationName)
{
    const Operation *op = nullptr;
    for (const Operation &candidate : operations()) {
        if (qstrcmp(candidate.name, operationName) == 0)
            op = &candidate;
    }
    QDialog *form = nullptr;
    // A form not built into this version fails like any creation failure: logged, nothing returned.
    modbase::errorTrap(QStringLiteral("Forms"), QString::fromLatin1(op->tag), [&] {
        if (!op->factory)
            throw TdsError(429, QStringLiteral("%1 is not available in this version").arg(QLatin1String(op->caption)));
        form = op->factory();
    });
    if (form) {
        g_live.ref();
        QObject::connect(form, &QObject::destroyed, [] { g_live.deref(); });
    }
    return form;
}

QDialog *Forms::Form15H() { return make("Form15H"); }
QDialog *Forms::Form15HNew() { return make("Form15HNew"); }
QDialog *Forms::Form15HNew1() { return make("Form15HNew1"); }
QDialog *Forms::Form15I() { return make("Form15I"); }
QDialog *Forms::Form15J() { return make("Form15J"); }
QDialog *Forms::Challan() { return make("Challan"); }
QDialog *Forms::ChallanNew() { return make("ChallanNew"); }
QDialog *Forms::Form15C() { return make("Form15C"); }
QDialog *Forms::Form15D() { return make("Form15D"); }
QDialog *Forms::Form15G() { return make("Form15G"); }
QDialog *Forms::Form15GNew() { return make("Form15GNew"); }
QDialog *Forms::Form15GNew1() { return make("Form15GNew1"); }
QDialog *Forms::Form13New() { return make("Form13New"); }
QDialog *Forms::Form13Old() { return make("Form13Old"); }
QDialog *Forms::Form26QA() { return make("Form26QA"); }
QDialog *Forms::Form26QAA() { return make("Form26QAA"); }
QDialog *Forms::Form27C() { return make("Form27C"); }
QDialog *Forms::Form27CNew() { return make("Form27CNew"); }
QDialog *Forms::Form49B() { return make("Form49B"); }
QDialog *Forms::Form49BCH() { return make("Form49BCH"); }
QDialog *Forms::FormEPayITD() { return make("FormEPayITD"); }

const std::vector<Forms::Operation> &Forms::operations()
{
    static const char *const declarations = "Declarations 15G / 15H";
    static const char *const certificates = "Applications and declarations";
    static const char *const challans = "Challans and e-payment";
    static const char *const property = "Property transactions";
    static const char *const tan = "TAN";
    static const std::vector<Operation> ops = {
        {"Form15H", "FORM15H", "Form 15H (first layout)", declarations, &Forms::Form15H, nullptr},
        {"Form15HNew", "FORM15HNew", "Form 15H", declarations, &Forms::Form15HNew, nullptr},
        {"Form15HNew1", "Form15HNew1", "Form 15H (October 2015)", declarations, &Forms::Form15HNew1, nullptr},
        {"Form15I", "FORM15I", "Form 15I", certificates, &Forms::Form15I, newFrm15i},
        {"Form15J", "FORM15J", "Form 15J", certificates, &Forms::Form15J, nullptr},
        {"Challan", "CHALLAN", "Challan ITNS 281 (earlier)", challans, &Forms::Challan, nullptr},
        {"ChallanNew", "ChallanNew", "Challan ITNS 281", challans, &Forms::ChallanNew, nullptr},
        {"Form15C", "Form15C", "Form 15C", certificates, &Forms::Form15C, newFrm15c},
        {"Form15D", "Form15D", "Form 15D", certificates, &Forms::Form15D, newFrm15d},
        {"Form15G", "Form15G", "Form 15G (first layout)", declarations, &Forms::Form15G, nullptr},
        {"Form15GNew", "Form15GNew", "Form 15G", declarations, &Forms::Form15GNew, nullptr},
        {"Form15GNew1", "Form15GNew1", "Form 15G (October 2015)", declarations, &Forms::Form15GNew1, nullptr},
        {"Form13New", "Form13New", "Form 13", certificates, &Forms::Form13New, nullptr},
        {"Form13Old", "Form13OLD", "Form 13 (earlier layout)", certificates, &Forms::Form13Old, nullptr},
        {"Form26QA", "FORM26QA", "Form 26QA", property, &Forms::Form26QA, nullptr},
        {"Form26QAA", "FORM26QAA", "Form 26QAA", property, &Forms::Form26QAA, nullptr},
        {"Form27C", "Form27C", "Form 27C (earlier layout)", certificates, &Forms::Form27C, nullptr},
        {"Form27CNew", "Form27CNew", "Form 27C", certificates, &Forms::Form27CNew, nullptr},
        {"Form49B", "Form49B", "Form 49B (TAN application)", tan, &Forms::Form49B, nullptr},
        {"Form49BCH", "Form49BCH", "TAN change request", tan, &Forms::Form49BCH, nullptr},
        {"FormEPayITD", "FormEPayITD", "e-Payment of tax", challans, &Forms::FormEPayITD, nullptr},
    };
    return ops;
}
