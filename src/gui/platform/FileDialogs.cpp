#include "platform/FileDialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QRegularExpression>

namespace zarvion::gui {

namespace {

FileDialogHandler& handler()
{
    static FileDialogHandler h;
    return h;
}

QString runDialog(bool save, bool& cancelled, const QString& filter, const QString& folder)
{
    QString path;
    if (handler()) {
        path = handler()(save, filter);
    } else {
        const QStringList filters = TranslateFilter(filter);
        QFileDialog dialog(QApplication::activeWindow(), QString(), folder);
        dialog.setNameFilters(filters);
        dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
        dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
        if (save)
            dialog.setOption(QFileDialog::DontConfirmOverwrite, false);
        if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty())
            path = dialog.selectedFiles().first();
    }
    cancelled = path.isEmpty();
    return path;
}

} // namespace

QStringList TranslateFilter(const QString& filter)
{
    const QStringList parts = filter.split('|');
    QStringList result;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        QString text = parts[i];
        text.remove(QRegularExpression(QStringLiteral("\\s*\\([^)]*\\)\\s*$")));
        QStringList patterns = parts[i + 1].split(';', Qt::SkipEmptyParts);
        for (QString& p : patterns) {
            p = p.trimmed();
            if (p == QLatin1String("*.*"))
                p = QStringLiteral("*");
        }
        result << QStringLiteral("%1 (%2)").arg(text.trimmed(), patterns.join(' '));
    }
    return result;
}

void SetFileDialogHandler(FileDialogHandler h)
{
    handler() = std::move(h);
}

QString ShowOpenDialog(bool& cancelled, const QString& filter, const QString& initialFolder)
{
    return runDialog(false, cancelled, filter, initialFolder);
}

QString ShowSaveDialog(bool& cancelled, const QString& filter, const QString& initialFolder)
{
    return runDialog(true, cancelled, filter, initialFolder);
}

} // namespace zarvion::gui
