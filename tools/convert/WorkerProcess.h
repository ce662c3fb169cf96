#pragma once

#include "convert/WorkerMessage.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

/// A child of this process that does one request after the other. It ends with its owner, however that ends.
class WorkerProcess
{
public:
    /// Tells the owner how far a request is.
    using Tell = std::function<void(std::string const& note)>;

    /// Does a request, in the child. @return the reply
    using Work =
        std::function<std::vector<std::string>(std::vector<std::string> const& request, Tell const& tell)>;

    /// Forks the child.
    /// @param others ends of other children's streams, which the child closes
    /// @throw ToolError if there can't be another process
    WorkerProcess(Work const& work, std::vector<int> const& others);

    /// Lets the child finish, and waits for its end.
    ~WorkerProcess();

    WorkerProcess(WorkerProcess const&) = delete;
    WorkerProcess& operator=(WorkerProcess const&) = delete;

    /// Hands a request over. If the child is dead, its stream says so at the next receive().
    void send(std::vector<std::string> const& request) const;

    /// Reads what has arrived, without waiting. @return false if the child is dead
    bool receive();

    /// The next whole message of what was received.
    std::optional<WorkerMessage> nextMessage() { return WorkerMessage::takeFrom(arrived); }

    /// Waits for the end of a child that is dead. @return how it ended: "signal 9 (Killed)"
    std::string howItEnded();

    /// What the child wrote on standard error since the last call, its beginning alone if it is very much.
    std::string takeErrors();

    int stream() const { return socket; }      ///< To wait for messages.
    int errorStream() const { return errors; } ///< To wait for what the child writes on standard error.

    /// Reads what the child has written on standard error, without waiting.
    void receiveErrors();

private:
    [[noreturn]] static void serve(int socket, Work const& work);

    pid_t process = -1;
    int socket = -1;
    int errors = -1;
    std::string arrived;
    std::string errorText;
    bool hasMoreErrors = false;
};
