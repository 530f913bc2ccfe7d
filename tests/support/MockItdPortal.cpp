#include "MockItdPortal.h"

#include "host/Settings.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {

// The pages come from the server, so that the page source holds only the page shown.
const char *const AppScript = R"JS(
var views = {};
function el(id) { return document.getElementById(id); }
function render() {
  var route = location.hash.replace(/^#/, '');
  var html = views[route];
  if (route === '/dashboard' && !sessionStorage.getItem('profileSkipped')) html += views['@profile'];
  el('app').innerHTML = html === undefined ? '<p>Page not found</p>' : html;
}
function toPassword() {
  sessionStorage.setItem('user', el('panAdhaarUserId').value);
  location.hash = '#/login/password';
}
function doLogin(force) {
  if (!force && !el('passwordCheckBox').checked) {
    el('loginError').textContent = 'Please confirm your secure access message';
    return;
  }
  fetch('/iec/foservices/api/login', {method: 'POST', headers: {'Content-Type': 'application/json'},
        body: JSON.stringify({userId: sessionStorage.getItem('user'),
                              password: force ? '' : el('loginPasswordField').value, force: !!force})})
    .then(function (r) { return r.json(); })
    .then(function (a) {
      if (a.result === 'OK') { sessionStorage.removeItem('profileSkipped'); location.hash = '#/dashboard'; }
      else if (a.result === 'MAX') el('loginPopup').innerHTML = views['@maxAttempts'];
      else el('loginError').textContent = a.message;
    });
}
function skipProfile() { sessionStorage.setItem('profileSkipped', '1'); render(); }
function openMenu() { el('eFileMenu').style.display = 'block'; }
window.addEventListener('hashchange', render);
fetch('/iec/foservices/api/views').then(function (r) { return r.json(); }).then(function (v) { views = v; render(); });
)JS";

QByteArray json(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

MockPortal::Reply jsonReply(const QByteArray &body, int status = 200)
{
    MockPortal::Reply reply;
    reply.status = status;
    reply.contentType = "application/json";
    reply.body = body;
    return reply;
}

} // namespace

void MockItdPortal::resetViews()
{
    m_views = QJsonObject();
    setView(QStringLiteral("/login"),
            QStringLiteral("<h1>Login</h1><label for=\"panAdhaarUserId\">Enter your User ID</label>"
                           "<input id=\"panAdhaarUserId\" type=\"text\">"
                           "<button class=\"large-button-primary width marTop16\" onclick=\"toPassword()\">Continue</button>"));
    setView(QStringLiteral("/login/password"),
            QStringLiteral("<h1>Enter your password</h1>"
                           "<label><input type=\"checkbox\" id=\"passwordCheckBox\"> Please confirm your secure access message</label>"
                           "<input type=\"password\" id=\"loginPasswordField\">"
                           "<div id=\"loginError\"></div><div id=\"loginPopup\"></div>"
                           "<button class=\"large-button-primary width marTop26\" onclick=\"doLogin(false)\">Continue</button>"));
    setView(QStringLiteral("@maxAttempts"),
            QStringLiteral("<div id=\"loginMaxAttemptsPopup\"><p>You have exceeded the maximum number of active sessions.</p>"
                           "<button class=\"defaultButton primaryButton primaryBtnMargin\" onclick=\"doLogin(true)\">Login Here</button></div>"));
    setView(QStringLiteral("/dashboard"),
            QStringLiteral("<nav><span class=\"menu\" onclick=\"openMenu()\"> e-File </span>"
                           "<div id=\"eFileMenu\" style=\"display:none\"><button class=\"mat-menu-item\" "
                           "onclick=\"location.hash='#/dashboard/e-pay-tax/e-pay-tax-dashboard'\">e-Pay Tax</button></div></nav>"
                           "<div id=\"profileMatCard\">Profile</div>"));
    setView(QStringLiteral("@profile"),
            QStringLiteral("<div class=\"dialog\"><p>Update your profile</p>"
                           "<button class=\"largeButton secondaryButton\" onclick=\"skipProfile()\">Skip</button></div>"));
    setView(QStringLiteral("/dashboard/e-pay-tax/e-pay-tax-dashboard"),
            QStringLiteral("<h1>e-Pay Tax</h1><p>Saved Drafts</p><button>New Payment</button>"));

}

MockItdPortal::MockItdPortal()
{
    resetViews();
    m_services.setHandler(QStringLiteral("/iec/foservices/"), [this](const MockPortal::Request &) {
        MockPortal::Reply reply;
        reply.body = servicesPage().toUtf8();
        return reply;
    });
    m_services.setHandler(QStringLiteral("/iec/foservices/api/views"),
                          [this](const MockPortal::Request &) { return jsonReply(json(m_views)); });
    m_services.setHandler(QStringLiteral("/iec/foservices/api/login"),
                          [this](const MockPortal::Request &request) { return login(request); });
    m_services.setHandler(draftPath(), [this](const MockPortal::Request &request) { return draft(request); });
    m_home.setHandler(QStringLiteral("/iec/foportal/"), [this](const MockPortal::Request &) {
        MockPortal::Reply reply;
        reply.body = QStringLiteral("<!DOCTYPE html><html><head><meta charset=\"utf-8\"><title>Home | Income Tax Department</title>"
                                    "</head><body><h1>e-Filing</h1><a href=\"%1/iec/foservices/#/login\">Login</a></body></html>")
                         .arg(m_services.baseUrl())
                         .toUtf8();
        return reply;
    });
}

bool MockItdPortal::start()
{
    if (!m_home.start() || !m_services.start())
        return false;
    Settings::setValue(QStringLiteral("portal/efilingHome"), m_home.baseUrl());
    Settings::setValue(QStringLiteral("portal/efilingServices"), m_services.baseUrl());
    return true;
}

void MockItdPortal::setAccount(const QString &userId, const QString &password)
{
    m_userId = userId;
    m_password = password;
}

void MockItdPortal::setView(const QString &route, const QString &html)
{
    m_views.insert(route, html);
}

QString MockItdPortal::servicesPage() const
{
    return QStringLiteral("<!DOCTYPE html><html><head><meta charset=\"utf-8\"><title>e-Filing</title></head>"
                          "<body><div id=\"app\"></div><script>%1</script></body></html>")
        .arg(QString::fromLatin1(AppScript));
}

MockPortal::Reply MockItdPortal::login(const MockPortal::Request &request)
{
    const QJsonObject sent = QJsonDocument::fromJson(request.body).object();
    const QString userId = sent.value(QStringLiteral("userId")).toString();
    const bool force = sent.value(QStringLiteral("force")).toBool();
    if (!force)
        m_logins.append({userId, sent.value(QStringLiteral("password")).toString()});

    const auto accept = [this] {
        m_token = QStringLiteral("tok-%1-7Qz9").arg(++m_sessions);
        MockPortal::Reply reply = jsonReply(json({{QStringLiteral("result"), QStringLiteral("OK")}}));
        reply.setCookies << QStringLiteral("AuthToken=%1; Path=/; HttpOnly").arg(m_token).toUtf8();
        return reply;
    };
    if (force && m_popupShown) {
        m_popupShown = false;
        return accept();
    }
    if (userId != m_userId || sent.value(QStringLiteral("password")).toString() != m_password
        || m_answer == LoginAnswer::WrongPassword)
        return jsonReply(json({{QStringLiteral("result"), QStringLiteral("WRONG")},
                               {QStringLiteral("message"), QStringLiteral("Invalid Password, Please retry.")}}));
    if (m_answer == LoginAnswer::MaxAttempts) {
        m_popupShown = true;
        return jsonReply(json({{QStringLiteral("result"), QStringLiteral("MAX")}}));
    }
    return accept();
}

void MockItdPortal::queueDraftReply(const QByteArray &body, int status)
{
    m_draftReplies.enqueue(jsonReply(body, status));
}

MockPortal::Reply MockItdPortal::draft(const MockPortal::Request &request)
{
    m_drafts.append({request.body, request.header("Cookie"), request.header("Content-Type")});
    const QByteArray cookie = request.header("Cookie");
    if (m_token.isEmpty() || !(QByteArray("; ") + cookie + ';').contains("; AuthToken=" + m_token.toUtf8() + ';'))
        return jsonReply(R"({"successFlag":"false","errors":[{"code":"EF401","desc":"Unauthorized"}]})", 401);
    if (!m_draftReplies.isEmpty())
        return m_draftReplies.dequeue();
    const QJsonObject formData = QJsonDocument::fromJson(request.body).object().value(QStringLiteral("formData")).toObject();
    QString reference = formData.value(QStringLiteral("pymntRefNum")).toString();
    if (reference.isEmpty())
        reference = QStringLiteral("2611%1").arg(++m_references, 8, 10, QLatin1Char('0'));
    return jsonReply(json({{QStringLiteral("successFlag"), QStringLiteral("true")},
                           {QStringLiteral("pymntRefNum"), reference},
                           {QStringLiteral("errors"), QJsonArray()}}));
}
