#pragma once

#include <QDialog>
#include <QProcess>

class QPlainTextEdit;

/// What fltcheck has to say of a file.
class CheckSheet : public QDialog
{
    Q_OBJECT

public:
    /// Begins to check a database.
    explicit CheckSheet(QString const& path, QWidget* parent = nullptr);
    ~CheckSheet() override;

signals:
    void finished(QString const& report); ///< The whole text.

private:
    void takeEnd();
    void takeError(QProcess::ProcessError error);

    QPlainTextEdit* text;
    QProcess process;
};
