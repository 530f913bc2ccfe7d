// tdsforms: the host window of TDS Forms.
#include "HostStartup.h"
#include "MainWindow.h"

#include <QApplication>
#include <QMessageBox>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("TDS Forms"));

    QString error;
    std::unique_ptr<Forms> component = HostStartup::start(app.arguments().mid(1), &error);
    if (!component) {
        QMessageBox::critical(nullptr, QStringLiteral("TDS Forms"), QStringLiteral("TDS Forms cannot start.\n\n") + error);
        return 1;
    }
    MainWindow window(modbase::dataObject(), std::move(component));
    window.show();
    return app.exec();
}
