#pragma once
// The e-filing portal on 127.0.0.1 for the browser tests: the home page on one host and the
// services (a single page routed by the address's "#" part, as the real one) on another;
// the login with its wrong-password and maximum-sessions answers, the profile prompt, the
// dashboard with its e-File menu, the payment API recording every draft it is sent, and
// the new payment's pages (act, tiles, heads, break-up or sections, payment mode; the same
// without login after a mobile OTP), which keep what they were given.
#include "MockPortal.h"

#include "host/IOnlineAction.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QQueue>
#include <QString>

class MockItdPortal
{
public:
    enum class LoginAnswer { Accept, WrongPassword, MaxAttempts };

    struct DraftPost {
        QByteArray body;
        QByteArray cookie;        // the Cookie header as sent
        QByteArray contentType;
    };

    MockItdPortal();

    // Starts both hosts, points the settings portal/efilingHome and portal/efilingServices
    // at them, and takes that account.
    bool start(const QString &userId = {}, const QString &password = {});
    void setAccount(const QString &userId, const QString &password);
    // How the next logins are answered; MaxAttempts gives the popup once, then a forced
    // login is let in.
    void setLoginAnswer(LoginAnswer answer) { m_answer = answer; }
    // Each login: the user id and password the page sent.
    QList<QPair<QString, QString>> logins() const { return m_logins; }
    // The session cookie handed out at a successful login ("AuthToken").
    QString authToken() const { return m_token; }

    // A page of the services app: route as after "#" ("/dashboard/e-pay-tax/tiles").
    void setView(const QString &route, const QString &html) { m_views.insert(route, html); }
    // The pages as they were at the start; "@profile" is the profile prompt over the
    // dashboard, "@maxAttempts" the popup of the password page.
    void resetViews();

    // What the new payment's pages were given, as the browser showing them keeps it: "act",
    // "assessmentYear", "tile", "minorHead", "majorHead", "deducteeType", "breakup" (by
    // input id), "demandRefNum", "sections" (rows of section, amount, interest, fee,
    // penalty, others), "mode", "otherBank", "bank" (its code); without login
    // "pantan", "confirmPanTan", "phone".
    static QJsonObject received(IOnlineAction &browser);
    // The OTP the pre-login page accepts.
    static QString otp() { return QStringLiteral("123456"); }
    // setView(amountShownView(), "whole"): the break-up page shows whole rupees only, as a
    // portal that drops the paise would.
    static QString amountShownView() { return QStringLiteral("@amountShown"); }

    // Payment API "/iec/PaymentAPI/auth/challan/savedraft". Without a queued reply a post
    // with the session cookie is answered successFlag "true" and a pymntRefNum (the one it
    // carries, else a new one); without the cookie 401 and "errors".
    void queueDraftReply(const QByteArray &json, int status = 200);
    QList<DraftPost> draftPosts() const { return m_drafts; }
    void clearDrafts() { m_drafts.clear(); }
    static QString draftPath() { return QStringLiteral("/iec/PaymentAPI/auth/challan/savedraft"); }

private:
    QString servicesPage() const;
    MockPortal::Reply login(const MockPortal::Request &request);
    MockPortal::Reply draft(const MockPortal::Request &request);

    MockPortal m_home;
    MockPortal m_services;
    QJsonObject m_views;
    QString m_userId;
    QString m_password;
    LoginAnswer m_answer = LoginAnswer::Accept;
    bool m_popupShown = false;
    QString m_token;
    int m_sessions = 0;
    int m_references = 0;
    QList<QPair<QString, QString>> m_logins;
    QQueue<MockPortal::Reply> m_draftReplies;
    QList<DraftPost> m_drafts;
};
