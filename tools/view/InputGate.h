#pragma once

#include <QObject>

class QWidget;

/// As long as it lives, keys and the mouse reach one widget alone: windows are painted and change their size,
/// and nothing else can be begun in them.
class InputGate : public QObject
{
    Q_OBJECT

public:
    /// @param open the widget that may be used, with what is in it
    explicit InputGate(QWidget& open);

    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Whether somebody wanted a window to close. It stays open.
    bool isCloseWanted() const { return closeWanted; }

signals:
    void escaped(); ///< By the key, or by closing a window.

private:
    QWidget& open;
    bool closeWanted = false;
};
