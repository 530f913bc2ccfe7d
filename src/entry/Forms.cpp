#include "entry/Forms.h"

#include "entry/FormRegistry.h"
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

QDialog *Forms::open(const QString &operation)
{
    const FormDescriptor *descriptor = FormRegistry::byOperation(operation);
    QDialog *form = nullptr;
    // A form not built into this version fails like any creation failure: logged, nothing returned.
    modbase::errorTrap(QStringLiteral("Forms"), descriptor ? QString::fromLatin1(descriptor->tag) : operation, [&] {
        if (!descriptor || !descriptor->window)
            throw TdsError(429, QStringLiteral("%1 is not available in this version")
                                    .arg(descriptor ? QString::fromUtf8(descriptor->caption) : operation));
        form = descriptor->window();
    });
    if (form) {
        g_live.ref();
        QObject::connect(form, &QObject::destroyed, [] { g_live.deref(); });
    }
    return form;
}

QDialog *Forms::Form15H() { return open(QStringLiteral("Form15H")); }
QDialog *Forms::Form15HNew() { return open(QStringLiteral("Form15HNew")); }
QDialog *Forms::Form15HNew1() { return open(QStringLiteral("Form15HNew1")); }
QDialog *Forms::Form15I() { return open(QStringLiteral("Form15I")); }
QDialog *Forms::Form15J() { return open(QStringLiteral("Form15J")); }
QDialog *Forms::Challan() { return open(QStringLiteral("Challan")); }
QDialog *Forms::ChallanNew() { return open(QStringLiteral("ChallanNew")); }
QDialog *Forms::Form15C() { return open(QStringLiteral("Form15C")); }
QDialog *Forms::Form15D() { return open(QStringLiteral("Form15D")); }
QDialog *Forms::Form15G() { return open(QStringLiteral("Form15G")); }
QDialog *Forms::Form15GNew() { return open(QStringLiteral("Form15GNew")); }
QDialog *Forms::Form15GNew1() { return open(QStringLiteral("Form15GNew1")); }
QDialog *Forms::Form13New() { return open(QStringLiteral("Form13New")); }
QDialog *Forms::Form13Old() { return open(QStringLiteral("Form13Old")); }
QDialog *Forms::Form26QA() { return open(QStringLiteral("Form26QA")); }
QDialog *Forms::Form26QAA() { return open(QStringLiteral("Form26QAA")); }
QDialog *Forms::Form27C() { return open(QStringLiteral("Form27C")); }
QDialog *Forms::Form27CNew() { return open(QStringLiteral("Form27CNew")); }
QDialog *Forms::Form49B() { return open(QStringLiteral("Form49B")); }
QDialog *Forms::Form49BCH() { return open(QStringLiteral("Form49BCH")); }
QDialog *Forms::FormEPayITD() { return open(QStringLiteral("FormEPayITD")); }
