#include "epay/EPayWindow.h"

#include "epay/EPayModes.h"
#include "epay/ItdActions.h"
#include "epay/PortalCredentials.h"
#include "epay/TanPaymentFlow.h"
#include "host/IDataObject.h"
#include "host/IOnlineAction.h"
#include "host/ServiceRegistry.h"
#include "host/Settings.h"
#include "json/Dialogs.h"
#include "shared/modbase.h"
#include "ui/FieldBehaviour.h"
#include "ui/FormLayout.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

namespace {

QFrame *panel(QWidget *parent, const char *name)
{
    auto *frame = new QFrame(parent);
    frame->setObjectName(QLatin1String(name));
    frame->setFrameShape(QFrame::StyledPanel);
    return frame;
}

QLabel *heading(QWidget *parent, const QString &text)
{
    auto *label = new QLabel(text, parent);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

} // namespace

frmePayITD::frmePayITD(QWidget *parent) : FormWindow(parent)
{
    setObjectName(QStringLiteral("frmePayITD"));
    setWindowTitle(QStringLiteral("e-Pay Tax @ ITD"));
    auto *outer = new QVBoxLayout(this);
    buildMain(this);
    buildLogin(this);
    buildProgress(this);
    outer->addWidget(m_famMain);
    outer->addWidget(m_famLogin);
    outer->addWidget(m_famprog);
    outer->addStretch(1);
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("lblStatus"));
    outer->addWidget(m_status);
    setStatusLabel(m_status);
    m_famLogin->hide();
    m_famprog->hide();

    // Enter walks the fields; the tab strip and options are walked in this order too.
    QList<QWidget *> order{m_tabs};
    for (QComboBox *c : std::as_const(m_banks))
        if (c)
            order << c;
    for (QAbstractButton *b : m_counterOptions->buttons())
        order << b;
    order << m_demandReference;
    for (const char *name : {"cmdePayITD_0", "cmdePayITD_1", "cmdePayITD_2"})
        order << m_buttons.value(QLatin1String(name));
    order << m_id << m_password << m_showPassword << m_mobile << m_buttons.value(QStringLiteral("CmdProceed"))
          << m_buttons.value(QStringLiteral("CmdBack"));
    for (int i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
    tabChanged(0);
}

frmePayITD::~frmePayITD() = default;

void frmePayITD::buildSummary(QWidget *parent, QVBoxLayout *layout)
{
    auto *grid = new QGridLayout;
    const QStringList captions{QStringLiteral("TAN"),       QStringLiteral("Assessment Year"),
                               QStringLiteral("Major Head"), QStringLiteral("Minor Head"),
                               QStringLiteral("Tax"),        QStringLiteral("Surcharge"),
                               QStringLiteral("Cess"),       QStringLiteral("Interest"),
                               QStringLiteral("Penalty"),    QStringLiteral("Fee"),
                               QStringLiteral("Others"),     QStringLiteral("Section(s)")};
    for (int i = 0; i < captions.size(); ++i) {
        auto *value = new QLabel(parent);
        value->setObjectName(QStringLiteral("lblValue_%1").arg(i));
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        grid->addWidget(new QLabel(captions[i] + QLatin1Char(':'), parent), i / 2, (i % 2) * 2);
        grid->addWidget(value, i / 2, (i % 2) * 2 + 1);
        m_summary.insert(captions[i], value);
    }
    layout->addLayout(grid);
}

void frmePayITD::buildMain(QWidget *parent)
{
    m_famMain = panel(parent, "famMain");
    auto *layout = new QVBoxLayout(m_famMain);
    layout->addWidget(heading(m_famMain, QStringLiteral("Payment")));
    buildSummary(m_famMain, layout);

    m_tabs = new QTabBar(m_famMain);
    m_tabs->setObjectName(QStringLiteral("SSTab1"));
    for (int tab = 0; tab < EPayModes::TabCount; ++tab)
        m_tabs->addTab(EPayModes::tabCaption(tab));
    layout->addWidget(m_tabs);
    m_modeLabel = new QLabel(m_famMain);
    m_modeLabel->setObjectName(QStringLiteral("lblMode"));
    layout->addWidget(m_modeLabel);

    auto *bankRow = new QHBoxLayout;
    m_bankLabel = new QLabel(QStringLiteral("&Bank"), m_famMain);
    bankRow->addWidget(m_bankLabel);
    m_bankStack = new QStackedWidget(m_famMain);
    const char *const names[] = {"CboBankNB", "CboBankDC", "cboBankPBC", nullptr, "CBoBankPG"};
    for (int tab = 0; tab < EPayModes::TabCount; ++tab) {
        if (!names[tab]) {
            m_banks << nullptr;
            m_bankStack->addWidget(new QLabel(QStringLiteral("The bank is chosen on the portal."), m_bankStack));
            continue;
        }
        auto *combo = new QComboBox(m_bankStack);
        combo->setObjectName(QLatin1String(names[tab]));
        combo->addItems(EPayModes::banks(tab));
        combo->setCurrentIndex(-1);
        m_banks << combo;
        m_bankStack->addWidget(combo);
    }
    m_bankStack->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    bankRow->addWidget(m_bankStack, 1);
    layout->addLayout(bankRow);

    m_counterRow = new QWidget(m_famMain);
    auto *counter = new QHBoxLayout(m_counterRow);
    counter->setContentsMargins(0, 0, 0, 0);
    m_counterOptions = new QButtonGroup(this);
    const QStringList options{QStringLiteral("Cas&h"), QStringLiteral("Che&que"), QStringLiteral("Demand Dra&ft")};
    for (int i = 0; i < options.size(); ++i) {
        auto *option = new QRadioButton(options[i], m_counterRow);
        option->setObjectName(QStringLiteral("optPBC_%1").arg(i));
        m_counterOptions->addButton(option, i);
        counter->addWidget(option);
    }
    counter->addStretch(1);
    layout->addWidget(m_counterRow);

    m_demandRow = new QWidget(m_famMain);
    auto *demand = new QHBoxLayout(m_demandRow);
    demand->setContentsMargins(0, 0, 0, 0);
    auto *demandLabel = new QLabel(QStringLiteral("Demand &Identification No."), m_demandRow);
    m_demandReference = new QLineEdit(m_demandRow);
    m_demandReference->setObjectName(QStringLiteral("txtDemandRef"));
    m_demandReference->setMaxLength(30);
    demandLabel->setBuddy(m_demandReference);
    demand->addWidget(demandLabel);
    demand->addWidget(m_demandReference, 1);
    m_demandRow->hide();
    layout->addWidget(m_demandRow);

    auto *buttons = new QHBoxLayout;
    const QStringList captions{QStringLiteral("&e-Pay Tax"), QStringLiteral("Pay &without Login"),
                               QStringLiteral("Check &Login")};
    for (int i = 0; i < captions.size(); ++i) {
        const QByteArray name = QStringLiteral("cmdePayITD_%1").arg(i).toLatin1();
        QPushButton *b = FormLayout::button(m_famMain, name.constData(), captions[i]);
        connect(b, &QPushButton::clicked, this, [this, i] { runAction([this, i] { cmdePayITDClicked(i); }); });
        m_buttons.insert(QString::fromLatin1(name), b);
        buttons->addWidget(b);
    }
    buttons->addStretch(1);
    layout->addLayout(buttons);
    connect(m_tabs, &QTabBar::currentChanged, this, &frmePayITD::tabChanged);
}

void frmePayITD::buildLogin(QWidget *parent)
{
    m_famLogin = panel(parent, "famLogin");
    auto *layout = new QVBoxLayout(m_famLogin);
    layout->addWidget(heading(m_famLogin, QStringLiteral("e-Filing Login")));
    auto *form = new QFormLayout;
    m_idLabel = new QLabel(QStringLiteral("TAN"), m_famLogin);
    m_idLabel->setObjectName(QStringLiteral("lblTAN"));
    m_id = new QLineEdit(m_famLogin);
    m_id->setObjectName(QStringLiteral("TxtTAN"));
    m_id->setMaxLength(10);
    m_idLabel->setBuddy(m_id);
    form->addRow(m_idLabel, m_id);

    m_pwdLabel = new QLabel(QStringLiteral("P&assword"), m_famLogin);
    m_pwdLabel->setObjectName(QStringLiteral("lblPwd"));
    m_password = new QLineEdit(m_famLogin);
    m_password->setObjectName(QStringLiteral("TxtPwd"));
    m_password->setEchoMode(QLineEdit::Password);
    // A password keeps its case.
    FieldBehaviour::markEmail(m_password);
    m_pwdLabel->setBuddy(m_password);
    m_showPassword = new QCheckBox(QStringLiteral("Sh&ow Password"), m_famLogin);
    m_showPassword->setObjectName(QStringLiteral("ChkShow"));
    connect(m_showPassword, &QCheckBox::toggled, this, [this](bool shown) {
        m_password->setEchoMode(shown ? QLineEdit::Normal : QLineEdit::Password);
    });
    auto *pwdRow = new QHBoxLayout;
    pwdRow->addWidget(m_password, 1);
    pwdRow->addWidget(m_showPassword);
    form->addRow(m_pwdLabel, pwdRow);

    m_mobileLabel = new QLabel(QStringLiteral("&Mobile No."), m_famLogin);
    m_mobileLabel->setObjectName(QStringLiteral("lblMobile"));
    m_mobile = new QLineEdit(m_famLogin);
    m_mobile->setObjectName(QStringLiteral("txtMobile"));
    m_mobile->setMaxLength(10);
    m_mobile->setInputMask(QString());
    m_mobileLabel->setBuddy(m_mobile);
    form->addRow(m_mobileLabel, m_mobile);
    layout->addLayout(form);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    QPushButton *proceed = FormLayout::button(m_famLogin, "CmdProceed", QStringLiteral("&Proceed"));
    connect(proceed, &QPushButton::clicked, this, [this] { runAction([this] { CmdProceedClicked(); }); });
    QPushButton *back = FormLayout::button(m_famLogin, "CmdBack", QStringLiteral("Bac&k"));
    connect(back, &QPushButton::clicked, this, &frmePayITD::CmdBackClicked);
    m_buttons.insert(QStringLiteral("CmdProceed"), proceed);
    m_buttons.insert(QStringLiteral("CmdBack"), back);
    buttons->addWidget(proceed);
    buttons->addWidget(back);
    layout->addLayout(buttons);
}

void frmePayITD::buildProgress(QWidget *parent)
{
    m_famprog = panel(parent, "famprog");
    auto *layout = new QHBoxLayout(m_famprog);
    m_lblprog = new QLabel(QStringLiteral("Please Wait ..."), m_famprog);
    m_lblprog->setObjectName(QStringLiteral("lblprog"));
    layout->addWidget(m_lblprog, 1);
    // Both stop the run between two pages.
    const std::pair<const char *, QString> buttons[] = {{"cmdprogC", QStringLiteral("&Cancel")},
                                                        {"cmdprogS", QStringLiteral("&Stop")}};
    for (const auto &[name, caption] : buttons) {
        QPushButton *b = FormLayout::button(m_famprog, name, caption);
        const QString question = qstrcmp(name, "cmdprogC") == 0 ? QStringLiteral("Do you really want to Cancel ?")
                                                                : QStringLiteral("Do you really want to Stop ?");
        connect(b, &QPushButton::clicked, this, [this, question] { askToStop(question); });
        m_buttons.insert(QLatin1String(name), b);
        layout->addWidget(b);
    }
}

QComboBox *frmePayITD::bankList(int tab) const
{
    return m_banks.value(tab);
}

void frmePayITD::InitMe(const QString &assessmentYear, const QString &tan, const QString &majorHead,
                        const QString &minorHead, const QString &tax, const QString &surcharge, const QString &cess,
                        const QString &interest, const QString &penalty, const QString &fee, const QString &others,
                        const QString &sections, qint16 residenceFlag, const QString &payerKind, QObject *caller,
                        const QString &demandReference)
{
    m_payment.InitMe(assessmentYear, tan, majorHead, minorHead, tax, surcharge, cess, interest, penalty, fee, others,
                     sections, residenceFlag, payerKind, caller, demandReference);
    const std::pair<const char *, EPayPayment::Value> shown[] = {
        {"TAN", EPayPayment::Tan},         {"Assessment Year", EPayPayment::AssessmentYear},
        {"Major Head", EPayPayment::MajorHead}, {"Minor Head", EPayPayment::MinorHead},
        {"Tax", EPayPayment::Tax},         {"Surcharge", EPayPayment::Surcharge},
        {"Cess", EPayPayment::Cess},       {"Interest", EPayPayment::Interest},
        {"Penalty", EPayPayment::Penalty}, {"Fee", EPayPayment::Fee},
        {"Others", EPayPayment::Others}};
    for (const auto &[caption, value] : shown)
        m_summary.value(QLatin1String(caption))->setText(m_payment.text(value));
    QStringList codes;
    for (const TanSectionPayment &s : EPayPayment::parseSections(m_payment.text(EPayPayment::Sections)))
        codes << s.code;
    m_summary.value(QStringLiteral("Section(s)"))->setText(codes.join(QStringLiteral(", ")));
    // A demand raised on regular assessment is paid against its number.
    m_demandReference->setText(m_payment.text(EPayPayment::DemandReference));
    m_demandRow->setVisible(m_payment.text(EPayPayment::MinorHead).trimmed() == QLatin1String("400"));
    m_external = Settings::value(QStringLiteral("epay/externalActions"), false).toBool();
    m_loaded = false;
}

void frmePayITD::showEvent(QShowEvent *event)
{
    if (!m_loaded) {
        m_loaded = true;
        formLoad();
    }
    FormWindow::showEvent(event);
}

void frmePayITD::formLoad()
{
    // Opened on its own, the form has nothing to pay.
    const bool handed = !m_payment.text(EPayPayment::AssessmentYear).trimmed().isEmpty();
    for (const char *name : {"cmdePayITD_0", "cmdePayITD_1", "cmdePayITD_2"})
        m_buttons.value(QLatin1String(name))->setEnabled(handed);
    if (!handed)
        showStatus(QStringLiteral("Nothing to pay: open a challan, select it and press \"e-Pay Tax @ ITD\" (Alt+E)."));

    IDataObject *data = modbase::dataObject();
    if (!data || !dialogs())
        return;
    const PortalCredentials::Payer payer = PortalCredentials::payerOf(m_payment.text(EPayPayment::PayerKind));
    m_credentials = std::make_unique<PortalCredentials>(*data, *dialogs(), payer);
    if (payer != PortalCredentials::Payer::Tan)
        m_credentials->setPartyId(m_payment.partyId());
    m_credentials->fill();
    m_id->setText(m_credentials->loginId());
    m_password->setText(m_credentials->password());
    m_idLabel->setText(payer == PortalCredentials::Payer::Tan ? QStringLiteral("TAN") : QStringLiteral("PAN"));
}

QWidget *frmePayITD::firstField() const
{
    if (m_famLogin->isVisibleTo(this))
        return m_id->text().isEmpty() || !m_password->isVisibleTo(this) ? static_cast<QWidget *>(m_id) : m_password;
    QComboBox *bank = bankList(m_tabs->currentIndex());
    return bank ? static_cast<QWidget *>(bank) : m_tabs;
}

void frmePayITD::tabChanged(int tab)
{
    m_bankStack->setCurrentIndex(tab);
    QComboBox *bank = bankList(tab);
    m_bankLabel->setBuddy(bank);
    m_bankLabel->setEnabled(bank != nullptr);
    m_counterRow->setVisible(tab == EPayModes::BankCounter);
    m_modeLabel->setText(EPayModes::mode(tab).description);
}

void frmePayITD::cmdePayITDClicked(int index)
{
    if (m_running)
        return;
    const int tab = m_tabs->currentIndex();
    QComboBox *bank = bankList(tab);
    if (bank && bank->currentIndex() < 0) {
        dialogs()->inform(QStringLiteral("Please select bank."), QString(), Dialogs::Icon::Information);
        bank->setFocus(Qt::OtherFocusReason);
        return;
    }
    if (m_demandRow->isVisibleTo(this) && m_demandReference->text().trimmed().isEmpty()) {
        dialogs()->inform(QStringLiteral("Please specify the Demand Identification No. of the demand being paid."),
                          QString(), Dialogs::Icon::Information);
        m_demandReference->setFocus(Qt::OtherFocusReason);
        return;
    }
    if (tab == EPayModes::BankCounter && m_counterOptions->checkedId() < 0) {
        dialogs()->inform(QStringLiteral("Please select payment mode."), QString(), Dialogs::Icon::Information);
        m_counterOptions->button(0)->setFocus(Qt::OtherFocusReason);
        return;
    }
    showLogin(index);
    if (index == 0)
        CmdProceedClicked();
}

void frmePayITD::showLogin(int index)
{
    m_loginIndex = index;
    const bool withoutLogin = index == 1;
    m_mobileLabel->setVisible(withoutLogin);
    m_mobile->setVisible(withoutLogin);
    m_pwdLabel->setVisible(!withoutLogin);
    m_password->setVisible(!withoutLogin);
    m_showPassword->setVisible(!withoutLogin);
    m_famMain->setEnabled(false);
    m_famLogin->setEnabled(true);
    m_famLogin->show();
    QWidget *first = m_id->text().isEmpty() ? m_id : withoutLogin ? m_mobile : m_password;
    first->setFocus(Qt::OtherFocusReason);
    showStatus(withoutLogin ? QStringLiteral("Type the mobile number for the OTP and proceed")
                            : QStringLiteral("Check the login and proceed"));
}

void frmePayITD::showMain()
{
    m_famprog->hide();
    m_famLogin->hide();
    m_famMain->setEnabled(true);
    m_buttons.value(QStringLiteral("cmdePayITD_0"))->setFocus(Qt::OtherFocusReason);
}

void frmePayITD::CmdBackClicked()
{
    if (m_running)
        return;
    showMain();
    showStatus(QString());
}

void frmePayITD::CmdProceedClicked()
{
    if (m_running || m_loginIndex < 0 || !m_credentials)
        return;
    const bool withoutLogin = m_loginIndex == 1;
    if (withoutLogin) {
        TanPayment given;
        given.tan = m_id->text();
        given.mobile = m_mobile->text();
        const QString missing = TanPaymentFlow::missingInput(TanPaymentFlow::Kind::PreLogin, given);
        if (!missing.isEmpty()) {
            dialogs()->inform(missing, QString(), Dialogs::Icon::Information);
            (given.tan.trimmed().isEmpty() ? m_id : m_mobile)->setFocus(Qt::OtherFocusReason);
            return;
        }
    } else {
        m_credentials->setLoginId(m_id->text().trimmed());
        m_credentials->setPassword(m_password->text());
        if (!m_credentials->proceed()) {
            (m_id->text().trimmed().isEmpty() ? m_id : m_password)->setFocus(Qt::OtherFocusReason);
            return;
        }
    }
    if (!m_payment.tanPayer()) {
        dialogs()->inform(QStringLiteral("Form %1 payments are made from the property-transaction forms.")
                              .arg(m_payment.text(EPayPayment::PayerKind)),
                          QString(), Dialogs::Icon::Information);
        return;
    }

    const int tab = m_tabs->currentIndex();
    QComboBox *bank = bankList(tab);
    TanPayment payment = m_payment.tanPayment(tab, m_counterOptions->checkedId(), bank ? bank->currentText() : QString());
    payment.tan = m_id->text().trimmed().toUpper();
    if (m_demandRow->isVisibleTo(this))
        payment.demandReference = m_demandReference->text().trimmed();
    payment.password = withoutLogin ? QString() : m_password->text();
    payment.mobile = withoutLogin ? m_mobile->text().trimmed() : QString();

    m_running = true;
    m_cancel = false;
    m_famLogin->setEnabled(false);
    m_lblprog->setText(QStringLiteral("Please Wait ..."));
    m_famprog->show();
    m_buttons.value(QStringLiteral("cmdprogC"))->setFocus(Qt::OtherFocusReason);
    m_result = m_external && !withoutLogin ? runExternal(payment) : runFlow(payment);
    m_running = false;
    showMain();
    if (m_result.failed())
        dialogs()->inform(m_result.message, QString(), Dialogs::Icon::Exclamation);
    showStatus(m_result.cancelled() ? QStringLiteral("e-Payment stopped")
               : m_result.failed()  ? QStringLiteral("e-Payment failed: the browser shows the page where it stopped")
                                    : QStringLiteral("Challan filled on the portal: choose the bank and pay in the browser"));
    emit runFinished();
    if (m_closeAfterRun) {
        m_closeAfterRun = false;
        QDialog::reject();
    }
}

PortalResult frmePayITD::runFlow(const TanPayment &payment)
{
    IDataObject *data = modbase::dataObject();
    // One wrapper per run; the one of an earlier run goes now.
    m_browser.reset();
    m_browser = createObjectAs<IOnlineAction>(QString::fromLatin1(ProgId::OnlineAction));
    if (m_browser)
        m_browser->SetLblProg(m_lblprog, float(m_buttons.value(QStringLiteral("cmdprogC"))->x() - m_lblprog->x()));
    TanPaymentFlow flow(
        m_browser.get(), [this](const QString &text) { m_lblprog->setText(text); }, [this] { return m_cancel; });
    const TanPaymentFlow::Kind kind = TanPaymentFlow::kindOf(payment.assessmentYear, m_loginIndex == 1);
    return flow.run(kind, payment, data ? data->ExePath() : QString(), data ? data->vTmpPath() : QString());
}

PortalResult frmePayITD::runExternal(const TanPayment &payment)
{
    PortalResult result;
    ItdActions::registerBuiltin();
    // Held, with its browser, until the form closes.
    m_actions.reset();
    m_actions = createObjectAs<IItdActions>(QString::fromLatin1(ProgId::ItdActions));
    IItdActions *actions = m_actions.get();
    if (!actions) {
        result.outcome = PortalResult::Outcome::Failed;
        result.failure = result.message = QStringLiteral("Can't create object ['ITDAct'].");
        return result;
    }
    IDataObject *data = modbase::dataObject();
    actions->InitMe(data ? data->ExePath() : QString(), QStringLiteral("\\ZeltLogger.log"),
                    data ? data->vTmpPath() : QString(), data ? data->vScreenRatX() : 1.0,
                    data ? data->vScreenRatY() : 1.0, data ? data->vScreenRatFS() : 1.0,
                    [this](const QString &text) { m_lblprog->setText(text); });
    actions->setCancelCheck([this] { return m_cancel; });
    if (actions->LoginWHR_CL(payment.tan, payment.password)) {
        const auto &p = payment;
        const QString sections = EPayPayment::sectionsText(p.sections);
        const bool demand = p.minorHead == QLatin1String("400");
        const bool paid = demand ? actions->GetePayChallan_TDS_OTH(p.assessmentYear, p.tan, p.majorHead, p.minorHead,
                                                                   p.tax, p.surcharge, p.cess, p.interest, p.penalty,
                                                                   p.others, p.demandReference, p.modeCode,
                                                                   p.subMode, p.bankCode, p.nonResident ? 1 : 0)
                                 : actions->GetePayChallan_TDS(p.assessmentYear, p.tan, p.majorHead, p.minorHead,
                                                               p.tax, p.surcharge, p.cess, p.interest, p.penalty,
                                                               p.others, sections, p.modeCode, p.subMode,
                                                               p.bankCode, p.nonResident ? 1 : 0);
        Q_UNUSED(paid);
    }
    // Shows the browser where the run ended, or closes a stopped one.
    actions->CheckForLoginCl();
    return actions->lastResult();
}

void frmePayITD::askToStop(const QString &question)
{
    if (m_running && dialogs()->ask(question, Dialogs::Icon::Question, false, QStringLiteral("Confirmation")))
        m_cancel = true;
}

bool frmePayITD::confirmClose()
{
    if (m_running) {
        // The run ends at its next step; the window closes then.
        if (dialogs()->ask(QStringLiteral("Do you really want to Stop ?"), Dialogs::Icon::Question, false,
                           QStringLiteral("Confirmation"))) {
            m_cancel = true;
            m_closeAfterRun = true;
        }
        return false;
    }
    return FormWindow::confirmClose();
}
