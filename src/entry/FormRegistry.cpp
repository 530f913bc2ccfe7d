#include "entry/FormRegistry.h"

#include "challan/ChallanTransfer.h"
#include "challan/ChallanWindow.h"
#include "declarations/DeclarationTransfer.h"
#include "declarations/DeclarationWindow.h"
#include "declarations/First15Window.h"
#include "declarations/Oct15Transfer.h"
#include "declarations/Oct15Window.h"
#include "epay/EPayWindow.h"
#include "forms/Form15CDLogic.h"
#include "forms/Form15ILogic.h"
#include "forms/frm15c.h"
#include "forms/frm15d.h"
#include "forms/frm15i.h"

namespace {
template <class Window>
QDialog *window()
{
    return new Window;
}

template <class Logic, auto... args>
std::unique_ptr<FormLogic> logic()
{
    return std::make_unique<Logic>(args...);
}

template <class Transfer, auto... args>
std::unique_ptr<RecordTransfer> transfer()
{
    return std::make_unique<Transfer>(args...);
}

// The first layouts: the declaration classes over their own design.
template <bool form15H>
std::unique_ptr<FormLogic> firstLogic()
{
    return std::make_unique<DeclarationForm>(First15Slots::design(form15H));
}

template <bool form15H>
std::unique_ptr<RecordTransfer> firstTransfer()
{
    return std::make_unique<DeclarationTransfer>(First15Slots::design(form15H));
}

const char *const declarations = "Declarations 15G / 15H";
const char *const certificates = "Applications and declarations";
const char *const challans = "Challans and e-payment";
const char *const property = "Property transactions";
const char *const tanFamily = "TAN";
} // namespace

namespace FormRegistry {

const std::vector<FormDescriptor> &all()
{
    static const std::vector<FormDescriptor> forms = {
        {1, "Form15H", "FORM15H", "Form 15H (first layout)", declarations, window<frm15h>, firstLogic<true>, "15h-first",
         {QStringLiteral("Form15H"), QStringLiteral("Form15H_Table")}, firstTransfer<true>},
        {2, "Form15HNew", "FORM15HNew", "Form 15H", declarations, window<frm15hNew>, logic<DeclarationForm, true>, "15h",
         {QStringLiteral("Tb15hM"), QStringLiteral("Tb15hT1"), QStringLiteral("Tb15hT2"), QStringLiteral("Tb15hT3"),
          QStringLiteral("Tb15hT4"), QStringLiteral("Tb15hT5")},
         transfer<DeclarationTransfer, true>},
        {3, "Form15HNew1", "Form15HNew1", "Form 15H (October 2015)", declarations, window<frm15hOct15>,
         logic<Oct15Form, true>, "15h-oct15", {QStringLiteral("Tb15hNew")}, transfer<Oct15Transfer, true>},
        {4, "Form15I", "FORM15I", "Form 15I", certificates, window<frm15i>, logic<Form15ILogic>, "15i",
         {QStringLiteral("Form15I")}},
        {5, "Form15J", "FORM15J", "Form 15J", certificates, nullptr, nullptr, nullptr, {}},
        {6, "Challan", "CHALLAN", "Challan ITNS 281 (earlier)", challans, window<Challan>,
         logic<ChallanForm, ChallanForm::Kind::Older>, nullptr,
         {QStringLiteral("Challan_ZeltOth"), QStringLiteral("Challan_TDSSec")}},
        {7, "ChallanNew", "ChallanNew", "Challan ITNS 281", challans, window<ChallanNew>,
         logic<ChallanForm, ChallanForm::Kind::Current>, "challan",
         {QStringLiteral("Challan_ZeltOth"), QStringLiteral("Challan_TDSSec")}, transfer<ChallanTransfer>},
        {8, "Form15C", "Form15C", "Form 15C", certificates, window<frm15c>,
         logic<Form15CDLogic, Form15CDLogic::Kind::C>, "15c", {QStringLiteral("Form15C")}},
        {9, "Form15D", "Form15D", "Form 15D", certificates, window<frm15d>,
         logic<Form15CDLogic, Form15CDLogic::Kind::D>, "15d", {QStringLiteral("Form15D")}},
        {10, "Form15G", "Form15G", "Form 15G (first layout)", declarations, window<frm15g>, firstLogic<false>, "15g-first",
         {QStringLiteral("Form15G"), QStringLiteral("Form15G_Sch1"), QStringLiteral("Form15G_Sch2"),
          QStringLiteral("Form15G_Sch3"), QStringLiteral("Form15G_Sch4"), QStringLiteral("Form15G_Sch5")},
         firstTransfer<false>},
        {11, "Form15GNew", "Form15GNew", "Form 15G", declarations, window<frm15gNew>, logic<DeclarationForm, false>, "15g",
         {QStringLiteral("Tb15gM"), QStringLiteral("Tb15gT1"), QStringLiteral("Tb15gT2"), QStringLiteral("Tb15gT3"),
          QStringLiteral("Tb15gT4"), QStringLiteral("Tb15gT5")},
         transfer<DeclarationTransfer, false>},
        {12, "Form15GNew1", "Form15GNew1", "Form 15G (October 2015)", declarations, window<frm15gOct15>,
         logic<Oct15Form, false>, "15g-oct15", {QStringLiteral("Tb15gNew")}, transfer<Oct15Transfer, false>},
        {13, "Form13New", "Form13New", "Form 13", certificates, nullptr, nullptr, nullptr, {}},
        {14, "Form13Old", "Form13OLD", "Form 13 (earlier layout)", certificates, nullptr, nullptr, nullptr, {}},
        {15, "Form26QA", "FORM26QA", "Form 26QA", property, nullptr, nullptr, nullptr, {}},
        {16, "Form26QAA", "FORM26QAA", "Form 26QAA", property, nullptr, nullptr, nullptr, {}},
        {17, "Form27C", "Form27C", "Form 27C (earlier layout)", certificates, nullptr, nullptr, nullptr, {}},
        {18, "Form27CNew", "Form27CNew", "Form 27C", certificates, nullptr, nullptr, nullptr, {}},
        {19, "Form49B", "Form49B", "Form 49B (TAN application)", tanFamily, nullptr, nullptr, nullptr, {}},
        {20, "Form49BCH", "Form49BCH", "TAN change request", tanFamily, nullptr, nullptr, nullptr, {}},
        {21, "FormEPayITD", "FormEPayITD", "e-Payment of tax", challans, window<frmePayITD>, nullptr, nullptr,
         {QStringLiteral("ItdLoginTanU"), QStringLiteral("ItdLoginTanC")}},
    };
    return forms;
}

const FormDescriptor *byOperation(const QString &operation)
{
    for (const FormDescriptor &form : all()) {
        if (operation == QLatin1String(form.operation))
            return &form;
    }
    return nullptr;
}

const FormDescriptor *byCliKey(const QString &key)
{
    for (const FormDescriptor &form : all()) {
        if (form.cliKey && key.trimmed().compare(QLatin1String(form.cliKey), Qt::CaseInsensitive) == 0)
            return &form;
    }
    return nullptr;
}

QString cliKeys()
{
    QStringList keys;
    for (const FormDescriptor &form : all()) {
        if (form.cliKey)
            keys << QString::fromLatin1(form.cliKey);
    }
    return keys.join(QLatin1Char('|'));
}

} // namespace FormRegistry
