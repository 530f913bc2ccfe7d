#pragma once
// frmePayITD: pays one challan on the e-filing portal. The operator picks the mode on the
// tab strip SSTab1 and the bank, checks the login (famLogin) and proceeds; the portal is then
// driven page by page (famprog shows each step) up to the bank's page, where the operator
// pays in the browser. The three cmdePayITD buttons: 0 pays with the stored login at once,
// 1 pays without login (TAN and mobile OTP), 2 shows the login to be checked first.
#include "epay/EPayPayment.h"
#include "epay/PortalSteps.h"
#include "ui/FormWindow.h"

#include <QHash>
#include <memory>

class IItdActions;
class IOnlineAction;
class PortalCredentials;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;
class QTabBar;
class QVBoxLayout;

class frmePayITD : public FormWindow
{
    Q_OBJECT
public:
    explicit frmePayITD(QWidget *parent = nullptr);
    ~frmePayITD() override;

    // The payment, before the form is shown (see EPayPayment for the values).
    void InitMe(const QString &assessmentYear, const QString &tan, const QString &majorHead, const QString &minorHead,
                const QString &tax, const QString &surcharge, const QString &cess, const QString &interest,
                const QString &penalty, const QString &fee, const QString &others, const QString &sections,
                qint16 residenceFlag, const QString &payerKind, QObject *caller, const QString &demandReference);
    static qint32 DateToUnixTime(const QDateTime &when) { return EPayPayment::DateToUnixTime(when); }

    const EPayPayment &payment() const { return m_payment; }
    // Hands the TAN payment to prjITDAct.clsMain instead of driving the pages here
    // (setting epay/externalActions).
    void setExternalActions(bool external) { m_external = external; }

    QPushButton *button(const QString &name) const { return m_buttons.value(name); }
    QTabBar *SSTab1() const { return m_tabs; }
    QComboBox *bankList(int tab) const;
    QButtonGroup *optPBC() const { return m_counterOptions; }
    QLineEdit *TxtTAN() const { return m_id; }
    QLineEdit *TxtPwd() const { return m_password; }
    QLineEdit *txtMobile() const { return m_mobile; }
    QLabel *lblTAN() const { return m_idLabel; }
    QLabel *lblprog() const { return m_lblprog; }
    QFrame *famMain() const { return m_famMain; }
    QFrame *famLogin() const { return m_famLogin; }
    QFrame *famprog() const { return m_famprog; }
    bool running() const { return m_running; }
    // The last run's outcome.
    const PortalResult &lastResult() const { return m_result; }

    QWidget *firstField() const override;

public slots:
    void cmdePayITDClicked(int index);
    void CmdProceedClicked();
    void CmdBackClicked();

signals:
    // A run has ended (done, failed or stopped).
    void runFinished();

protected:
    bool confirmClose() override;
    void showEvent(QShowEvent *event) override;

private:
    void buildMain(QWidget *parent);
    void buildLogin(QWidget *parent);
    void buildProgress(QWidget *parent);
    void buildSummary(QWidget *parent, QVBoxLayout *layout);
    void formLoad();
    void tabChanged(int tab);
    void showLogin(int index);
    void showMain();
    PortalResult runFlow(const TanPayment &tanPayment);
    PortalResult runExternal(const TanPayment &tanPayment);
    void askToStop(const QString &question);

    EPayPayment m_payment;
    std::unique_ptr<PortalCredentials> m_credentials;
    std::shared_ptr<IOnlineAction> m_browser;   // held from the run's start until the form closes
    std::shared_ptr<IItdActions> m_actions;     // the same, when the component runs the payment
    PortalResult m_result;
    bool m_external = false;
    bool m_loaded = false;
    bool m_running = false;
    bool m_cancel = false;                      // FlagCancel
    bool m_closeAfterRun = false;
    int m_loginIndex = -1;                      // the cmdePayITD that opened the login

    QFrame *m_famMain = nullptr;
    QFrame *m_famLogin = nullptr;
    QFrame *m_famprog = nullptr;
    QTabBar *m_tabs = nullptr;
    QStackedWidget *m_bankStack = nullptr;
    QLabel *m_modeLabel = nullptr;
    QWidget *m_counterRow = nullptr;
    QWidget *m_demandRow = nullptr;
    QLineEdit *m_demandReference = nullptr;
    QList<QComboBox *> m_banks;                 // one per tab; null for RTGS/NEFT
    QLabel *m_bankLabel = nullptr;
    QButtonGroup *m_counterOptions = nullptr;
    QLabel *m_idLabel = nullptr;
    QLineEdit *m_id = nullptr;
    QLabel *m_pwdLabel = nullptr;
    QLineEdit *m_password = nullptr;
    QCheckBox *m_showPassword = nullptr;
    QLabel *m_mobileLabel = nullptr;
    QLineEdit *m_mobile = nullptr;
    QLabel *m_lblprog = nullptr;
    QLabel *m_status = nullptr;
    QHash<QString, QPushButton *> m_buttons;
    QHash<QString, QLabel *> m_summary;
};
