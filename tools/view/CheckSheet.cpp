#include "view/CheckSheet.h"

#include "view/ShownText.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace
{

constexpr char program[] = "fltcheck";

/// The one that stands beside this program, or else any.
QString placeOfProgram()
{
    QString const beside = QApplication::applicationDirPath() + "/" + program;
    return QFileInfo(beside).isExecutable() ? beside : QString(program);
}

} // namespace

CheckSheet::CheckSheet(QString const& path, QWidget* parent) : QDialog(parent), text(new QPlainTextEdit)
{
    setWindowTitle(ShownText::title(tr("Check of %1").arg(QFileInfo(path).fileName())));
    setObjectName("check");
    setAttribute(Qt::WA_DeleteOnClose);
    text->setReadOnly(true);
    text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text->setAccessibleName(tr("Findings"));
    text->setPlainText(tr("Checking…"));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(buttons);
    resize(820, 460);

    process.setProcessChannelMode(QProcess::MergedChannels);
    connect(&process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this, &CheckSheet::takeEnd);
    connect(&process, &QProcess::errorOccurred, this, &CheckSheet::takeError);
    process.start(placeOfProgram(), {"--color=never", "--", QFileInfo(path).absoluteFilePath()});
}

CheckSheet::~CheckSheet()
{
    process.disconnect(this);
    process.kill();
    process.waitForFinished();
}

void CheckSheet::takeEnd()
{
    text->setPlainText(QString::fromUtf8(process.readAll()));
    emit finished(text->toPlainText());
}

void CheckSheet::takeError(QProcess::ProcessError error)
{
    if (error != QProcess::FailedToStart)
        return;
    text->setPlainText(tr("%1 can't be started. Install the package velloreader.").arg(program));
    emit finished(text->toPlainText());
}
