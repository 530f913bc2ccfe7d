#include "host/report/PagedOutput.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPdfWriter>
#include <QtDebug>

namespace PagedOutput {

bool writePdf(const QString &path, const QPageLayout &page, const QString &title, const PaintPages &paint)
{
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance())) {
        qWarning().noquote() << "report: drawing a PDF needs a QGuiApplication";
        return false;
    }
    const QFileInfo info(path);
    if (path.isEmpty() || !info.absoluteDir().exists()) {
        qWarning().noquote() << "report: cannot write" << path << "- the folder does not exist";
        return false;
    }
    int pages = 0;
    {
        QPdfWriter writer(path);
        writer.setPageLayout(page);
        writer.setResolution(600);
        writer.setTitle(title);
        writer.setCreator(QCoreApplication::applicationName());
        pages = paint(&writer);
    }
    if (pages <= 0 || QFileInfo(path).size() == 0) {
        qWarning().noquote() << "report: cannot write" << path;
        return false;
    }
    return true;
}

} // namespace PagedOutput
