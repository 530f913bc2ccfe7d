#include "declarations/Oct15Slots.h"

#include <QRegularExpression>

namespace Oct15Slots {

namespace {

const QChar CellMark(0x00A6);   // "¦"
const QChar RowMark(u'^');

Slot text(const QString &caption, int width)
{
    return Slot{.caption = caption, .width = width};
}
Slot kind(const QString &caption, FieldKind k, int width = 0)
{
    return Slot{.caption = caption, .kind = k, .width = width};
}
Slot combo(const QString &caption, const char *name, QStringList items, bool states = false)
{
    return Slot{.caption = caption, .kind = FieldKind::Combo, .items = std::move(items), .stateList = states,
                .name = QString::fromLatin1(name)};
}
QString form(bool form15H)
{
    return form15H ? QStringLiteral("15H") : QStringLiteral("15G");
}
// Items after the residential status are numbered one lower on Form 15H.
QString item(bool form15H, int number15G, const char *caption)
{
    return QStringLiteral("%1. %2").arg(form15H ? number15G - 1 : number15G).arg(QString::fromUtf8(caption));
}

} // namespace

Declarant declarant(bool form15H)
{
    Declarant d;
    const int h = form15H ? 1 : 0;
    if (form15H) {
        d.dob = 2;
    } else {
        d.status = 2;
        d.residential = 3;
    }
    int next = 4 - h;
    for (int *slot : {&d.flat, &d.premises, &d.road, &d.area, &d.town, &d.state, &d.pin, &d.email, &d.std, &d.tel,
                      &d.mobile, &d.assessed, &d.estIncome, &d.estTotal, &d.formsFiled, &d.formsAmount, &d.latestAy,
                      &d.previousYear})
        *slot = next++;
    d.count = next;
    return d;
}

SlotTable declarantSlots(bool form15H)
{
    const Declarant at = declarant(form15H);
    const QString f = form(form15H);
    SlotTable t(at.count);
    t[at.name] = text(QStringLiteral("1. Name of Assessee (Declarant)"), 150);
    t[at.pan] = kind(QStringLiteral("2. PAN of the Assessee"), FieldKind::Pan, 10);
    if (form15H) {
        t[at.dob] = kind(QStringLiteral("3. Date of Birth"), FieldKind::Date, 10);
    } else {
        t[at.status] = combo(QStringLiteral("3. Status"), "cbostatusM",
                             {QStringLiteral("AOP/BOI"), QStringLiteral("HUF"), QStringLiteral("INDIVIDUAL"),
                              QStringLiteral("OTHERS")});
        t[at.residential] = combo(QStringLiteral("5. Residential Status"), "cboresstatusM",
                                  {QStringLiteral("RESIDENT"), QStringLiteral("RESIDENT BUT NOT ORDINARILY RESIDENT"),
                                   QStringLiteral("NON-RESIDENT")});
    }
    t[at.previousYear] = text(QStringLiteral("4. Previous year (P.Y.) (for which declaration is being made)"), 7);
    t[at.flat] = text(item(form15H, 6, "Flat/Door/Block No."), 100);
    t[at.premises] = text(item(form15H, 7, "Name of Premises"), 100);
    t[at.road] = text(item(form15H, 8, "Road/Street/Lane"), 100);
    t[at.area] = text(item(form15H, 9, "Area/Locality"), 100);
    t[at.town] = text(item(form15H, 10, "Town/City/District"), 100);
    t[at.state] = combo(item(form15H, 11, "State"), "cbostateM", {}, true);
    t[at.pin] = kind(item(form15H, 12, "PIN"), FieldKind::Pin, 6);
    t[at.email] = kind(item(form15H, 13, "Email"), FieldKind::Email, 100);
    t[at.std] = text(QStringLiteral("STD Code"), 10);
    t[at.tel] = text(QStringLiteral("Tel. No."), 20);
    t[at.mobile] = text(QStringLiteral("Mobile"), 15);
    t[at.assessed] = combo(item(form15H, 15, "Whether assessed to tax under the Income-tax Act, 1961"), "cboAsIT",
                           {QStringLiteral("Yes"), QStringLiteral("No")});
    t[at.latestAy] = text(QStringLiteral("Latest Assessment Year for which assessed"), 7);
    t[at.estIncome] = kind(item(form15H, 16, "Estimated income for which this declaration is made"), FieldKind::Amount, 18);
    t[at.estTotal] = kind(QStringLiteral("%1. Estimated total income of the P.Y. in which income mentioned in column %2 "
                                         "to be included")
                              .arg(form15H ? 16 : 17)
                              .arg(form15H ? 15 : 16),
                          FieldKind::Amount, 18);
    t[at.formsFiled] = Slot{.caption = QStringLiteral("Total No. of Form No. %1 filed").arg(f),
                            .encoding = Encoding::Integer, .width = 5};
    t[at.formsAmount] = kind(QStringLiteral("Aggregate amount of income for which Form No. %1 filed").arg(f),
                             FieldKind::Amount, 18);
    return t;
}

SlotTable payerSlots()
{
    SlotTable t(PayerCount);
    t[PayerName] = text(QStringLiteral("Name"), 150);
    t[SequenceNo] = text(QStringLiteral("Sequence No. (Only Numeric Part of Unique Identification Number)"), 9);
    t[PayerPan] = kind(QStringLiteral("PAN"), FieldKind::Pan, 10);
    t[PayerAddress] = kind(QStringLiteral("Address"), FieldKind::MultiLine, 255);
    t[PayerTan] = kind(QStringLiteral("TAN"), FieldKind::Tan, 10);
    t[PayerEmail] = kind(QStringLiteral("Email"), FieldKind::Email, 100);
    t[PayerStd] = text(QStringLiteral("STD Code"), 10);
    t[PayerTel] = text(QStringLiteral("Tel. No."), 20);
    t[PayerMobile] = text(QStringLiteral("Mobile"), 15);
    t[AmountPaid] = kind(QStringLiteral("Amount of income paid"), FieldKind::Amount, 18);
    t[ReceivedOn] = kind(QStringLiteral("Date on which Declaration is Received"), FieldKind::Date, 10);
    t[PaidOn] = kind(QStringLiteral("Date on which the income has been paid/credited"), FieldKind::Date, 10);
    return t;
}

Slot incomeSlot(bool form15H)
{
    return Slot{.caption = item(form15H, 19, "Details of income for which the declaration is filed"),
                .name = QStringLiteral("vsM")};
}

SlotTable allSlots(bool form15H)
{
    return declarantSlots(form15H) + SlotTable{incomeSlot(form15H)} + payerSlots();
}

QList<ScreenRow> screenRows(bool form15H)
{
    const Declarant at = declarant(form15H);
    QList<ScreenRow> rows = {{{}, {at.name}}, {{}, {at.pan}}, {{}, {form15H ? at.dob : at.status}}, {{}, {at.previousYear}}};
    if (!form15H)
        rows << ScreenRow{{}, {at.residential}};
    rows << ScreenRow{{}, {at.flat}} << ScreenRow{{}, {at.premises}} << ScreenRow{{}, {at.road}}
         << ScreenRow{{}, {at.area}} << ScreenRow{{}, {at.town}} << ScreenRow{{}, {at.state}} << ScreenRow{{}, {at.pin}}
         << ScreenRow{{}, {at.email}}
         << ScreenRow{item(form15H, 14, "Telephone No. (with STD Code) and Mobile No."), {at.std, at.tel, at.mobile}}
         << ScreenRow{item(form15H, 15, "Whether assessed to tax under the Income-tax Act, 1961, Latest Assessment "
                                        "Year for which assessed"),
                      {at.assessed, at.latestAy}, false}
         << ScreenRow{{}, {at.estIncome}} << ScreenRow{{}, {at.estTotal}}
         << ScreenRow{form15H ? QStringLiteral("17. Details of Form No. 15H other than this form filed for the previous "
                                               "year, if any")
                              : QStringLiteral("18. Details of Form No. 15G other than this form filed during the "
                                               "previous year, if any"),
                      {at.formsFiled, at.formsAmount}}
         << ScreenRow{incomeSlot(form15H).caption, {-1}};
    return rows;
}

ScheduleLayout incomeLayout(bool form15H)
{
    using A = ScheduleColumn::Align;
    using K = ScheduleColumn::Kind;
    return ScheduleLayout{
        .title = incomeSlot(form15H).caption,
        .table = form15H ? QStringLiteral("Tb15hNew") : QStringLiteral("Tb15gNew"),
        .columns = {ScheduleColumn{.heading = QStringLiteral("Identification number of relevant investment/account, etc."),
                                   .align = A::Left, .kind = K::Text},
                    ScheduleColumn{.heading = QStringLiteral("Nature of income"), .align = A::Left, .kind = K::Text},
                    ScheduleColumn{.heading = QStringLiteral("Section under which tax is deductible"), .align = A::Centre,
                                   .kind = K::Text},
                    ScheduleColumn{.heading = QStringLiteral("Amount of income"), .align = A::Right, .kind = K::Number,
                                   .format = QStringLiteral("###0.00")}}};
}

QString packIncome(const QList<QStringList> &rows)
{
    QStringList packed;
    for (const QStringList &row : rows) {
        QStringList cells;
        for (int c = 0; c < IncomeColumns; ++c)
            cells << QString(row.value(c)).remove(CellMark).remove(RowMark);
        packed << cells.join(CellMark);
    }
    return packed.join(RowMark);
}

QList<QStringList> unpackIncome(const QString &text)
{
    QList<QStringList> rows;
    if (text.isEmpty())
        return rows;
    for (const QString &row : text.split(RowMark)) {
        QStringList cells = row.split(CellMark);
        cells.resize(IncomeColumns);
        rows << cells;
    }
    return rows;
}

QString nextYear(const QString &year)
{
    static const QRegularExpression shape(QStringLiteral("^(\\d{4})-(\\d{2})$"));
    const QRegularExpressionMatch m = shape.match(year.trimmed());
    if (!m.hasMatch())
        return {};
    const int first = m.captured(1).toInt();
    if ((first + 1) % 100 != m.captured(2).toInt())
        return {};
    return QStringLiteral("%1-%2").arg(first + 1).arg((first + 2) % 100, 2, 10, QLatin1Char('0'));
}

QString previousYearOf(const QString &asYear)
{
    static const QRegularExpression shape(QStringLiteral("^(\\d{4})-(\\d{2})$"));
    const QRegularExpressionMatch m = shape.match(asYear.trimmed());
    if (!m.hasMatch() || nextYear(asYear).isEmpty())
        return {};
    const int first = m.captured(1).toInt();
    return QStringLiteral("%1-%2").arg(first - 1).arg(first % 100, 2, 10, QLatin1Char('0'));
}

} // namespace Oct15Slots
