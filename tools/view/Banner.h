#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

/// Says above the picture why a database can't be shown, and offers what can be done about it.
class Banner : public QFrame
{
    Q_OBJECT

public:
    explicit Banner(QWidget* parent = nullptr);

    /// @param problem   what is wrong, where, and what to do
    /// @param stillSeen what the picture shows nevertheless; empty for nothing
    void tell(QString const& problem, QString const& stillSeen);

    QString text() const; ///< What it says at present.

signals:
    void messagesWanted();
    void checkWanted();

private:
    QLabel* label;
};
