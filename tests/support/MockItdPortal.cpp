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
  if (route === '/dashboard/e-pay-tax/e-pay-tax-dashboard')
    html += views[sessionStorage.getItem('actChosen') ? '@newPayment' : '@selectAct'];
  closeList();
  el('app').innerHTML = html === undefined ? '<p>Page not found</p>'
                        : html.replace('{{idLabel}}', (newAct() ? 'TAN' : 'PAN') + ': ');
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

// The new payment's pages. What each page was given is kept in sessionStorage "got".
function got() { return JSON.parse(sessionStorage.getItem('got') || '{}'); }
function keep(key, value) { var g = got(); g[key] = value; sessionStorage.setItem('got', JSON.stringify(g)); }
function go(route) { location.hash = '#' + route; }
function route() { return location.hash.replace(/^#/, ''); }
function prelogin() { return route().indexOf('/e-pay-tax-prelogin/') === 0; }
function newAct() { return got().act === 'Income-tax Act, 2025'; }
function say(text) { var e = el('pageError'); if (e) e.textContent = text; }
function checked(scope, selector) { return (scope || document).querySelector(selector + '.mat-mdc-radio-checked'); }
function ePayTax() {
  sessionStorage.removeItem('actChosen');
  if (route() === '/dashboard/e-pay-tax/e-pay-tax-dashboard') render(); else go('/dashboard/e-pay-tax/e-pay-tax-dashboard');
}
function chooseAct() {
  if (!got().act) { say('Please select the applicable act'); return; }
  sessionStorage.setItem('actChosen', '1'); render();
}
function closeList() { var o = el('overlay'); if (o) o.parentNode.removeChild(o); window.openList = null; }
function showList(select) {
  closeList();
  window.openList = select;
  var o = document.createElement('div');
  o.id = 'overlay'; o.className = 'cdk-overlay-pane';
  var html = select.getAttribute('data-search') ? '<input aria-label="dropdown search" oninput="filterList(this.value)">' : '';
  select.getAttribute('data-options').split('|').forEach(function (o) {
    var i = o.indexOf(':');
    html += '<mat-option id="' + o.substring(0, i) + '">' + o.substring(i + 1) + '</mat-option>';
  });
  o.innerHTML = html;
  document.body.appendChild(o);
}
function filterList(text) {
  document.querySelectorAll('#overlay mat-option').forEach(function (o) {
    o.style.display = o.textContent.indexOf(text) >= 0 ? '' : 'none'; });
}
function pick(option) {
  var select = window.openList, value = option.id || option.textContent.trim().split(' ')[0];
  select.setAttribute('data-value', value);
  select.querySelector('.value').textContent = option.textContent.trim();
  if (select.getAttribute('data-key')) keep(select.getAttribute('data-key'), value);
  closeList();
}
document.addEventListener('click', function (e) {
  var option = e.target.closest('mat-option');
  if (option && window.openList) { pick(option); return; }
  var select = e.target.closest('mat-select');
  if (select) { showList(select); return; }
  var radio = e.target.closest('mat-radio-button');
  if (radio) {
    var group = radio.closest('mat-radio-group') || radio.parentNode;
    group.querySelectorAll('mat-radio-button').forEach(function (r) { r.classList.remove('mat-mdc-radio-checked'); });
    radio.classList.add('mat-mdc-radio-checked');
    if (radio.getAttribute('data-key')) keep(radio.getAttribute('data-key'), radio.getAttribute('value') || radio.textContent.trim());
    if (radio.getAttribute('data-show')) el(radio.getAttribute('data-show')).innerHTML = views['@bankList'];
  }
});
function proceed(demand) {
  if (!got().assessmentYear) { say('Please select Assessment Year'); return; }
  keep('tile', demand ? 'demand' : 'payable');
  go(prelogin() ? '/e-pay-tax-prelogin/e-pay-tax/tds-payable-by-taxpayer'
     : demand ? '/dashboard/e-pay-tax/demand-tan-details'
     : newAct() ? '/dashboard/e-pay-tax/tds-deductee-type' : '/dashboard/e-pay-tax/tds-payable-by-taxpayer');
}
function nextPage() {
  var head = checked(el('heads'), 'mat-radio-button');
  var major = head && head.nextElementSibling;
  if (!head || !major.value) { say('Please select the type of payment'); return; }
  keep('minorHead', head.getAttribute('value'));
  keep('majorHead', major.value);
  var type = checked(el('deducteeType'), 'mat-radio-button');
  if (el('deducteeType')) {
    if (!type) { say('Please select the deductee type'); return; }
    keep('deducteeType', type.textContent.trim());
  }
  el('continueHere').innerHTML = '<button onclick="toBreakup()"> Continue </button>';
}
function toBreakup() {
  var r = route();
  if (prelogin()) go('/e-pay-tax-prelogin/e-pay-tax/add-tax-breakup-details');
  else if (r.indexOf('demand-tan-details') >= 0) go('/dashboard/e-pay-tax/new-payment-summary');
  else if (r.indexOf('tds-deductee-type') >= 0) go('/dashboard/e-pay-tax/tds-section-wise-payment');
  else go('/dashboard/e-pay-tax/add-tax-breakup-details');
}
var amountIds = ['taxAmt', 'surchargeAmt', 'cessAmt', 'interestAmt', 'penaltyAmt', 'othersAmt'];
function sumUp() {
  amountIds.forEach(function (id, i) {
    var v = views['@amountShown'] === 'whole' ? parseInt(el(id).value || '0', 10) : Number(el(id).value || '0');
    el('paid' + (i + 1)).value = v.toLocaleString('en-IN');
  });
}
function submitBreakup() {
  var typed = {};
  amountIds.forEach(function (id) { typed[id] = el(id).value; });
  keep('breakup', typed);
  if (el('demandRefNum')) keep('demandRefNum', el('demandRefNum').value);
  go(prelogin() ? '/e-pay-tax-prelogin/e-pay-tax/add-payment-details' : '/dashboard/e-pay-tax/add-payment-details');
}
function field(name) { return document.querySelector('input[formcontrolname="' + name + '"]'); }
var sectionFields = ['amount', 'interest', 'fee', 'penalty', 'others'];
function addSection() {
  var select = document.querySelector('mat-select[formcontrolname="selectedSection"]');
  if (!select.getAttribute('data-value')) { say('Please select a section'); return; }
  var row = {section: select.getAttribute('data-value')};
  sectionFields.forEach(function (f) { row[f] = field(f).value; field(f).value = ''; });
  var rows = got().sections || [];
  rows.push(row);
  keep('sections', rows);
  select.removeAttribute('data-value');
  select.querySelector('.value').textContent = 'Select Section';
  el('added').textContent = rows.length + ' section(s) added';
}
function toSummary() {
  if (!(got().sections || []).length) { say('Please add a section'); return; }
  go('/dashboard/e-pay-tax/new-payment-summary');
}
function pickTab(tab) {
  document.querySelectorAll('.mdc-tab').forEach(function (t) { t.classList.remove('mdc-tab--active'); });
  tab.classList.add('mdc-tab--active');
  keep('mode', tab.textContent.trim());
  el('tabBody').innerHTML = views[tab.getAttribute('data-view')];
}
function toPantan() {
  if (!el('pantan').value || el('pantan').value !== field('confirmPanTan').value || !/^[0-9]{10}$/.test(el('phone').value)) {
    say('Please enter matching TAN and a mobile number'); return;
  }
  keep('pantan', el('pantan').value); keep('confirmPanTan', field('confirmPanTan').value); keep('phone', el('phone').value);
  go('/e-pay-tax-prelogin/mob-otp');
}
function verifyOtp() {
  if (document.querySelector('input[type="password"]').value !== '123456') { say('Invalid OTP'); return; }
  go('/e-pay-tax-prelogin/success-prelogin');
}
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
    // One line per view; "%1" in a template is what the view adds to it.
    const char *const plain[][2] = {
        {"/login", R"h(<h1>Login</h1><label for="panAdhaarUserId">Enter your User ID</label><input id="panAdhaarUserId" type="text"><button class="large-button-primary width marTop16" onclick="toPassword()">Continue</button>)h"},
        {"/login/password", R"h(<h1>Enter your password</h1><label><input type="checkbox" id="passwordCheckBox"> Please confirm your secure access message</label><input type="password" id="loginPasswordField"><div id="loginError"></div><div id="loginPopup"></div><button class="large-button-primary width marTop26" onclick="doLogin(false)">Continue</button>)h"},
        {"@maxAttempts", R"h(<div id="loginMaxAttemptsPopup"><p>You have exceeded the maximum number of active sessions.</p><button class="defaultButton primaryButton primaryBtnMargin" onclick="doLogin(true)">Login Here</button></div>)h"},
        {"/dashboard", R"h(<nav><span class="menu" onclick="openMenu()"> e-File </span><div id="eFileMenu" style="display:none"><button class="mat-menu-item" onclick="ePayTax()">e-Pay Tax</button></div></nav><div id="profileMatCard">Profile</div>)h"},
        {"@profile", R"h(<div class="dialog"><p>Update your profile</p><button class="largeButton secondaryButton" onclick="skipProfile()">Skip</button></div>)h"},
        {"/dashboard/e-pay-tax/e-pay-tax-dashboard", R"h(<h1>e-Pay Tax</h1><p>Saved Drafts</p>)h"},
        {"@selectAct", R"h(<div class="dialog"><h2>Select Applicable Income Tax Act</h2><mat-radio-group><mat-radio-button data-key="act">Income-tax Act, 2025</mat-radio-button><mat-radio-button data-key="act">Income-tax Act, 1961</mat-radio-button></mat-radio-group><div id="pageError"></div><button onclick="chooseAct()">CONTINUE</button></div>)h"},
        {"@newPayment", R"h(<p>New Payment for tax</p><button onclick="go('/dashboard/e-pay-tax/tiles')">+ New Payment</button>)h"},
        {"/dashboard/e-pay-tax/tds-section-wise-payment", R"h(<h2>TDS/TCS Section-Wise Payment Details</h2><mat-select formcontrolname="selectedSection" data-search="1" data-options=":1024 - Salary|:192 - Salary (old act)|:194C - Payment to contractors|:194J - Fees for professional services"><span class="value">Select Section</span></mat-select><input formcontrolname="amount"><input formcontrolname="interest"><input formcontrolname="fee"><input formcontrolname="penalty"><input formcontrolname="others"><button onclick="addSection()">ADD</button><div id="added"></div><div id="pageError"></div><button onclick="toSummary()">Continue</button>)h"},
        {"@banks", R"h(<mat-radio-group><mat-radio-button data-key="otherBank" value="yes" data-show="otherBankList">Other Bank</mat-radio-button></mat-radio-group><div id="otherBankList"></div>)h"},
        {"@mandate", R"h(<p>Generate the mandate form and pay at your bank.</p>)h"},
        {"@bankList", R"h(<mat-select id="mat-select-4" data-key="bank" data-options="SBIN:State Bank Of India|HDFC:HDFC Bank|ICIC:ICICI Bank|UTIB:Axis Bank|CNRB:Canara Bank"><span class="value">Select Bank</span></mat-select>)h"},
        {"/e-pay-tax-prelogin/user-details", R"h(<h2>Enter Details</h2><input id="pantan" placeholder="PAN/TAN"><input formcontrolname="confirmPanTan" placeholder="Confirm PAN/TAN"><input id="phone" placeholder="Mobile No."><div id="pageError"></div><button onclick="toPantan()"> Continue </button>)h"},
        {"/e-pay-tax-prelogin/mob-otp", R"h(<h2>OTP verification</h2><p>Enter the 6 digit OTP sent to your mobile</p><input type="password" maxlength="6"><div id="pageError"></div><button onclick="verifyOtp()">Verify</button>)h"},
        {"/e-pay-tax-prelogin/success-prelogin", R"h(<p>You have successfully verified through mobile OTP</p><button onclick="go('/e-pay-tax-prelogin/e-pay-tax/tiles')">Continue</button>)h"},
    };
    for (const auto &[route, html] : plain)
        setView(QLatin1String(route), QLatin1String(html));

    const QString tiles = QStringLiteral(R"h(<p>%1<b>BLRA12345B</b></p><label>Assessment Year</label><mat-select formcontrolname="assessmentYear" data-key="assessmentYear" data-options=":2024-25|:2025-26|:2026-27|:2027-28"><span class="value">Select</span></mat-select><div id="pageError"></div><div class="tile largervf" onclick="proceed(false)"><h3>TDS/TCS payable by taxpayer</h3><span>Proceed</span></div><div class="tile largervf" onclick="proceed(true)"><h3>Demand payment (Regular Assessment)</h3><span>Proceed</span></div>)h");
    setView(QStringLiteral("/dashboard/e-pay-tax/tiles"), tiles.arg(QStringLiteral("{{idLabel}}")));
    setView(QStringLiteral("/e-pay-tax-prelogin/e-pay-tax/tiles"), tiles.arg(QStringLiteral("TAN: ")));

    const QString heads = QStringLiteral(R"h(<h2>Type of Payment (Minor Head)</h2><mat-radio-group id="heads" name="tdsRadiobtn"><div><mat-radio-button value="200">TDS/TCS Payable by Taxpayer (200)</mat-radio-button><input placeholder="Major Head"></div><div><mat-radio-button value="400">TDS/TCS Regular Assessment (400)</mat-radio-button><input placeholder="Major Head"></div></mat-radio-group>%1<div id="pageError"></div><img alt="next page" src="data:," style="display:inline-block;width:24px;height:24px" onclick="nextPage()"><div id="continueHere"></div>)h");
    for (const char *route : {"/dashboard/e-pay-tax/tds-payable-by-taxpayer", "/dashboard/e-pay-tax/demand-tan-details",
                              "/e-pay-tax-prelogin/e-pay-tax/tds-payable-by-taxpayer"})
        setView(QLatin1String(route), heads.arg(QString()));
    setView(QStringLiteral("/dashboard/e-pay-tax/tds-deductee-type"),
            heads.arg(QStringLiteral(R"h(<mat-radio-group id="deducteeType"><mat-radio-button>Resident Deductee(s)</mat-radio-button><mat-radio-button>Non-Resident Deductee(s)</mat-radio-button></mat-radio-group>)h")));

    QString breakup = QStringLiteral("<h2>Tax Break Up Details</h2>%1<table>");
    const char *const rows[][2] = {{"(a) Tax", "taxAmt"},         {"(b) Surcharge", "surchargeAmt"}, {"(c) Cess", "cessAmt"},
                                   {"(d) Interest", "interestAmt"}, {"(e) Penalty", "penaltyAmt"},     {"(f) Others", "othersAmt"}};
    for (int i = 0; i < 6; ++i)
        breakup += QStringLiteral(R"h(<tr><td>%1</td><td><input id="%2" oninput="sumUp()"></td><td><input id="paid%3" readonly></td></tr>)h")
                       .arg(QLatin1String(rows[i][0]), QLatin1String(rows[i][1])).arg(i + 1);
    breakup += QStringLiteral(R"h(</table><button onclick="submitBreakup()">Continue</button>)h");
    setView(QStringLiteral("/dashboard/e-pay-tax/add-tax-breakup-details"), breakup.arg(QString()));
    setView(QStringLiteral("/e-pay-tax-prelogin/e-pay-tax/add-tax-breakup-details"), breakup.arg(QString()));
    setView(QStringLiteral("/dashboard/e-pay-tax/new-payment-summary"),
            breakup.arg(QStringLiteral(R"h(<label>Demand Reference Number</label><input id="demandRefNum">)h")));

    QString payment = QStringLiteral(R"h(<h2>Select Payment Mode</h2><div class="tabs">)h");
    for (const char *tab : {"Net Banking", "Debit Card", "Pay at Bank Counter", "RTGS/NEFT", "Payment Gateway"})
        payment += QStringLiteral(R"h(<div class="mdc-tab" data-view="%1" onclick="pickTab(this)">%2</div>)h")
                       .arg(QLatin1String(tab) == QLatin1String("RTGS/NEFT") ? "@mandate" : "@banks", QLatin1String(tab));
    payment += QStringLiteral(R"h(</div><div id="tabBody"></div>)h");
    setView(QStringLiteral("/dashboard/e-pay-tax/add-payment-details"), payment);
    setView(QStringLiteral("/e-pay-tax-prelogin/e-pay-tax/add-payment-details"), payment);
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
                                    "</head><body><h1>e-Filing</h1><a href=\"%1/iec/foservices/#/login\">Login</a>"
                                    "<nav><span onclick=\"location.href='%1/iec/foservices/#/e-pay-tax-prelogin/user-details'\">"
                                    "e-Pay Tax</span></nav></body></html>")
                         .arg(m_services.baseUrl())
                         .toUtf8();
        return reply;
    });
}

bool MockItdPortal::start(const QString &userId, const QString &password)
{
    if (!m_home.start() || !m_services.start())
        return false;
    setAccount(userId, password);
    Settings::setValue(QStringLiteral("portal/efilingHome"), m_home.baseUrl());
    Settings::setValue(QStringLiteral("portal/efilingServices"), m_services.baseUrl());
    return true;
}

void MockItdPortal::setAccount(const QString &userId, const QString &password)
{
    m_userId = userId;
    m_password = password;
}

QJsonObject MockItdPortal::received(IOnlineAction &browser)
{
    IOnlineDriver *driver = browser.objectSWC();
    const QVariant got = driver ? driver->executeScript(QStringLiteral("return sessionStorage.getItem('got') || '{}';")) : QVariant();
    return QJsonDocument::fromJson(got.toString().toUtf8()).object();
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
