#pragma once
// The portal login of the e-pay form: the id (TxtTAN) and password (TxtPwd) filled from
// storage when the form opens, the checks when the user proceeds, and the save of a
// changed password. A TAN payer's login is the deductor's row of ItdLoginTanU (or the
// common password of ItdLoginTanC); a 26QB/26QC/26QD payer's is on its party row.
// Passwords are stored sealed (PortalSecret); the clear text never goes into a statement.
// No widgets: the window binds its two boxes to loginId() and password().
#include "json/Dialogs.h"

#include <QString>

class IDataObject;

class PortalCredentials
{
public:
    enum class Payer { Tan, Form26QB, Form26QC, Form26QD };

    // "26QB", "26QC", "26QD"; any other kind is a TAN payment.
    static Payer payerOf(const QString &kind);
    // The party table of a 26Q payer; empty for a TAN payer.
    static QString partyTable(Payer payer);

    PortalCredentials(IDataObject &data, Dialogs &dialogs, Payer payer = Payer::Tan);

    Payer payer() const { return m_payer; }
    // A 26Q payer's row: the Id of the caller's grid vsM at its current Row. Only a whole
    // number is taken; anything else leaves the record unknown.
    void setPartyId(const QString &id);

    // The form's load. A TAN payer takes the deductor (codeno) and its TAN; without a TAN
    // nothing is looked up. A stored password that cannot be opened is told to the user
    // and leaves the password box empty.
    void fill();

    QString loginId() const { return m_loginId; }
    void setLoginId(const QString &text) { m_loginId = text; }
    QString password() const { return m_password; }
    void setPassword(const QString &text) { m_password = text; }
    // What fill() put in the password box; the save tells a change against it.
    QString loadedPassword() const { return m_loaded; }

    // The click of CmdProceed before the flow: the checks in order (an information message
    // stops at the first that fails), then the save of a changed password. True when the
    // payment may go on.
    bool proceed();

private:
    bool recordKnown() const;
    QString storedPassword(const QString &stored);
    void savePassword();
    bool run(const QString &sql);

    IDataObject &m_data;
    Dialogs &m_dialogs;
    Payer m_payer;
    QString m_code;      // the deductor, for a TAN payer
    QString m_partyId;   // the party row, for a 26Q payer
    QString m_loginId;
    QString m_password;
    QString m_loaded;
    bool m_storedInClear = false;   // saved before sealing: sealed at the next proceed
};
