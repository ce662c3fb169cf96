#pragma once

#include <QElapsedTimer>
#include <QWidget>
#include <cstdint>
#include <memory>
#include <string>

class InputGate;
class QLabel;
class QProgressBar;
class QPushButton;

/// Says how far a load is, and lets it be cancelled. Loads run in the window's own thread: meanwhile the
/// window is painted, and takes nothing but that.
class LoadProgress : public QWidget
{
    Q_OBJECT

public:
    explicit LoadProgress(QWidget* parent = nullptr);
    ~LoadProgress() override;

    bool isLoading() const { return gate != nullptr; }

    /// Whether somebody wanted to close the window during the latest load, which cancels that.
    bool isCloseWanted() const { return closeWanted; }

    /// Goes with one load. It comes into sight if that takes longer than a moment.
    class Run
    {
    public:
        /// @param path of the database
        Run(LoadProgress& progress, QString const& path);
        ~Run();
        Run(Run const&) = delete;
        Run& operator=(Run const&) = delete;

    private:
        LoadProgress& progress;
    };

    /// Called by the load now and then, as FltLoader::Progress. @return false once it is cancelled
    bool goOn(std::string const& file, std::uint64_t bytesDone, std::uint64_t bytesInAll);

signals:
    void shown();

private:
    void cancel() { isCancelled = true; }

    std::unique_ptr<InputGate> gate;
    QElapsedTimer sinceLook;
    bool isCancelled = false;
    bool closeWanted = false;
    QLabel* label;
    QProgressBar* bar;
    QPushButton* button;
};
