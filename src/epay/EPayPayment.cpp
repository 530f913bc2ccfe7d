#include "epay/EPayPayment.h"

#include "epay/EPayModes.h"

#include <QTableWidget>
#include <QCoreApplication>
#include <limits>

namespace {

QString cell(QString text)
{
    text.remove(QLatin1Char(','));
    text.remove(QLatin1Char(';'));
    return text.trimmed();
}

} // namespace

void EPayPayment::InitMe(const QString &assessmentYear, const QString &tan, const QString &majorHead,
                         const QString &minorHead, const QString &tax, const QString &surcharge, const QString &cess,
                         const QString &interest, const QString &penalty, const QString &fee, const QString &others,
                         const QString &sections, qint16 residenceFlag, const QString &payerKind, QObject *caller,
                         const QString &demandReference)
{
    m_values = {QString(), assessmentYear, tan, majorHead, minorHead, tax, surcharge, cess, interest, penalty, fee,
                others, sections, QString(), payerKind, QString(), demandReference};
    m_flag = residenceFlag;
    m_caller = caller;
    if (yearNumber() <= 2026)
        m_values[Others] = amountText(amountOf(fee) + amountOf(others));
    QCoreApplication::processEvents();
}

QString EPayPayment::text(Value value) const
{
    return m_values[value];
}

int EPayPayment::yearNumber() const
{
    return m_values[AssessmentYear].trimmed().left(4).toInt();
}

bool EPayPayment::tanPayer() const
{
    const QString kind = m_values[PayerKind];
    return kind != QLatin1String("26QB") && kind != QLatin1String("26QC") && kind != QLatin1String("26QD");
}

QString EPayPayment::partyId() const
{
    if (!m_caller)
        return QString();
    const auto *grid = m_caller->findChild<QTableWidget *>(QStringLiteral("vsM"));
    if (!grid || grid->currentRow() < 0)
        return QString();
    int column = 0;
    for (int c = 0; c < grid->columnCount(); ++c)
        if (grid->horizontalHeaderItem(c) && grid->horizontalHeaderItem(c)->text().compare(
                                                  QLatin1String("Id"), Qt::CaseInsensitive) == 0)
            column = c;
    const QTableWidgetItem *item = grid->item(grid->currentRow(), column);
    return item ? item->text().trimmed() : QString();
}

TanPayment EPayPayment::tanPayment(int modeTab, int counterOption, const QString &bankName) const
{
    TanPayment p;
    p.tan = m_values[Tan].trimmed().toUpper();
    p.assessmentYear = m_values[AssessmentYear].trimmed();
    p.majorHead = m_values[MajorHead].trimmed();
    p.minorHead = m_values[MinorHead].trimmed();
    p.demandReference = m_values[DemandReference].trimmed();
    p.nonResident = m_flag == 1;
    // The portal's boxes take plain numbers.
    p.tax = amountText(amountOf(m_values[Tax]));
    p.surcharge = amountText(amountOf(m_values[Surcharge]));
    p.cess = amountText(amountOf(m_values[Cess]));
    p.interest = amountText(amountOf(m_values[Interest]));
    p.penalty = amountText(amountOf(m_values[Penalty]));
    p.others = amountText(amountOf(m_values[Others]));
    p.sections = parseSections(m_values[Sections]);
    const EPayModes::Mode mode = EPayModes::mode(modeTab, counterOption);
    p.modeTab = modeTab;
    p.modeCode = mode.code;
    p.subMode = mode.subMode;
    p.modeDescription = mode.description;
    p.bankCode = EPayModes::hasBankList(modeTab) ? EPayModes::bankCode(bankName) : QString();
    return p;
}

QString EPayPayment::sectionsText(const QList<TanSectionPayment> &sections)
{
    QStringList rows;
    for (const TanSectionPayment &s : sections)
        rows << QStringList{cell(s.code), cell(s.amount), cell(s.interest), cell(s.fee), cell(s.penalty),
                            cell(s.others)}
                    .join(QLatin1Char(','));
    return rows.join(QLatin1Char(';'));
}

QList<TanSectionPayment> EPayPayment::parseSections(const QString &text)
{
    QList<TanSectionPayment> sections;
    for (const QString &row : text.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const QStringList cells = row.split(QLatin1Char(','));
        if (cells.value(0).trimmed().isEmpty())
            continue;
        sections << TanSectionPayment{cells.value(0).trimmed(), cells.value(1).trimmed(), cells.value(2).trimmed(),
                                      cells.value(3).trimmed(), cells.value(4).trimmed(), cells.value(5).trimmed()};
    }
    return sections;
}

double EPayPayment::amountOf(const QString &text)
{
    QString plain = text.trimmed();
    plain.remove(QLatin1Char(','));
    return plain.toDouble();
}

QString EPayPayment::amountText(double value)
{
    return QString::number(value, 'f', value == qRound64(value) ? 0 : 2);
}

qint32 EPayPayment::DateToUnixTime(const QDateTime &when)
{
    if (!when.isValid())
        return 0;
    // The clock reading as it stands, as though it were UTC.
    const qint64 seconds = QDateTime(when.date(), when.time(), Qt::UTC).toSecsSinceEpoch();
    if (seconds < std::numeric_limits<qint32>::min() || seconds > std::numeric_limits<qint32>::max())
        return 0;
    return static_cast<qint32>(seconds);
}
