#include "epay/PortalCredentials.h"

#include "epay/PortalSecret.h"
#include "host/IDataObject.h"

#include <QStringList>

namespace {

const QString SpecialTan = QStringLiteral("#?#TAN#?#");
const QString SpecialCommon = QStringLiteral("#?#COMMON#?#");

bool wholeNumber(const QString &text)
{
    if (text.isEmpty())
        return false;
    for (const QChar c : text)
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return false;
    return true;
}

} // namespace

PortalCredentials::Payer PortalCredentials::payerOf(const QString &kind)
{
    if (kind == QLatin1String("26QB"))
        return Payer::Form26QB;
    if (kind == QLatin1String("26QC"))
        return Payer::Form26QC;
    if (kind == QLatin1String("26QD"))
        return Payer::Form26QD;
    return Payer::Tan;
}

QString PortalCredentials::partyTable(Payer payer)
{
    switch (payer) {
    case Payer::Form26QB: return QStringLiteral("26qb_buyerseller");
    case Payer::Form26QC: return QStringLiteral("26qc_partymaster");
    case Payer::Form26QD: return QStringLiteral("26QD_PartyMaster");
    case Payer::Tan: break;
    }
    return QString();
}

PortalCredentials::PortalCredentials(IDataObject &data, Dialogs &dialogs, Payer payer)
    : m_data(data), m_dialogs(dialogs), m_payer(payer)
{
}

void PortalCredentials::setPartyId(const QString &id)
{
    const QString trimmed = id.trimmed();
    // The id goes into the statement unquoted.
    m_partyId = wholeNumber(trimmed) ? trimmed : QString();
}

bool PortalCredentials::recordKnown() const
{
    return m_payer == Payer::Tan ? !m_code.isEmpty() : !m_partyId.isEmpty();
}

QString PortalCredentials::storedPassword(const QString &stored)
{
    QString password;
    QString why;
    if (!PortalSecret::open(stored, password, &why)) {
        m_dialogs.inform(why, QString(), Dialogs::Icon::Exclamation);
        return QString();
    }
    return password;
}

void PortalCredentials::fill()
{
    m_password.clear();
    m_loaded.clear();
    m_storedInClear = false;
    if (m_payer != Payer::Tan) {
        if (m_partyId.isEmpty())
            return;
        Recordset rs;
        if (m_data.RecordsetQuery(rs, QStringLiteral("SELECT * FROM ") + partyTable(m_payer) + QStringLiteral(" WHERE Id=") + m_partyId,
                                  m_data.cnnobj())
            && !rs.isEOF()) {
            const QString userId = rs.text(QStringLiteral("ItdUserId")).trimmed();
            if (!userId.isEmpty())
                m_loginId = userId;
            const QString stored = rs.text(QStringLiteral("ItdUserPass"));
            m_storedInClear = !stored.isEmpty() && !PortalSecret::isSealed(stored);
            m_password = storedPassword(stored);
        }
        m_loaded = m_password;
        return;
    }

    m_code = m_data.codeno();
    const QString tan = m_data.Tanno();
    if (tan.trimmed().isEmpty())
        return;
    m_loginId = tan;
    Recordset rs;
    if (m_data.RecordsetQuery(rs, QStringLiteral("SELECT * FROM ItdLoginTanU WHERE Code_No=") + m_data.quoted(m_code),
                              m_data.cnnobj())
        && !rs.isEOF()) {
        const QString stored = rs.text(QStringLiteral("LoginPwd"));
        if (stored == SpecialTan) {
            m_password = m_loginId;
        } else if (stored == SpecialCommon) {
            Recordset common;
            if (m_data.RecordsetQuery(common, QStringLiteral("SELECT * FROM ItdLoginTanC"), m_data.cnnobj()) && !common.isEOF())
                m_password = storedPassword(common.text(QStringLiteral("LoginPwd")));
        } else {
            m_storedInClear = !stored.isEmpty() && !PortalSecret::isSealed(stored);
            m_password = storedPassword(stored);
        }
    }
    m_loaded = m_password;
}

bool PortalCredentials::proceed()
{
    if (m_loginId.trimmed().isEmpty()) {
        m_dialogs.inform(m_payer == Payer::Tan ? QStringLiteral("Please specify TAN !") : QStringLiteral("Please specify PAN !"));
        return false;
    }
    if (m_password.isEmpty()) {
        m_dialogs.inform(QStringLiteral("Please specify Password !"));
        return false;
    }
    savePassword();
    return true;
}

bool PortalCredentials::run(const QString &sql)
{
    // A failed statement is logged (and its texts masked) by the data object itself.
    const bool done = m_data.ConQuery(sql);
    m_data.ConQuery(QStringLiteral("Flush Tables"));
    return done;
}

void PortalCredentials::savePassword()
{
    if (!recordKnown() || (m_password == m_loaded && !m_storedInClear))
        return;
    const bool inserting = [&] {
        if (m_payer != Payer::Tan)
            return false;
        Recordset rs;
        return m_data.RecordsetQuery(rs, QStringLiteral("SELECT * FROM ItdLoginTanU WHERE Code_No=") + m_data.quoted(m_code),
                                     m_data.cnnobj())
               && rs.isEOF();
    }();
    QString sealed;
    QString why;
    // Never stored in clear: without the key file nothing is stored; this run goes on with
    // the password typed.
    if (!PortalSecret::seal(inserting ? m_password.trimmed() : m_password, sealed, &why)) {
        m_dialogs.inform(why, QString(), Dialogs::Icon::Exclamation);
        return;
    }
    const QString sqlPassword = m_data.TruncVarSQL(sealed);

    if (m_payer != Payer::Tan) {
        if (run(QStringLiteral("Update ") + partyTable(m_payer) + QStringLiteral(" SET ItdUserPass='") + sqlPassword
                + QStringLiteral("', ItdUserId='") + m_data.TruncVarSQL(m_loginId) + QStringLiteral("'")
                + QStringLiteral(" Where Id=") + m_partyId))
            m_storedInClear = false;
        m_loaded = m_password;
        return;
    }
    if (!inserting) {
        if (run(QStringLiteral("Update ItdLoginTanU SET LoginPwd='") + sqlPassword + QStringLiteral("'")
                + QStringLiteral(" Where Code_No='") + m_data.TruncVarSQL(m_code) + QStringLiteral("'")))
            m_storedInClear = false;
        m_loaded = m_password;
        return;
    }
    QStringList values{m_data.TruncVarSQL(m_code),
                       QStringLiteral("#?#MOBNO#?#"), QStringLiteral("#?#MOBNO#?#"),
                       QStringLiteral("#?#TELNO#?#"), QStringLiteral("#?#FAXNO#?#"),
                       QStringLiteral("#?#EMAILID#?#"), QStringLiteral("#?#EMAILID#?#"),
                       QStringLiteral("0"), QString(), QStringLiteral("0"), QString(),
                       sqlPassword};
    for (int i = 13; i <= 26; ++i)
        values << QString();
    values << m_data.TruncVarSQL(m_data.Name()) << QString() << QString() << QString();
    run(QStringLiteral("INSERT INTO ItdLoginTanU VALUES ('") + values.join(QStringLiteral("','")) + QStringLiteral("')"));
    m_loaded = m_password;
}
