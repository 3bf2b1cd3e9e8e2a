#pragma once
// The one error type of the example host: a message for the user that names
// the file, line or property path at fault, and the exit status to end with.
// Every bad input ends the run through it; nothing is written after it.

#include <QString>

#include <stdexcept>

namespace kelchart {

class Failure : public std::runtime_error {
public:
    enum Status { BadInput = 1, BadUsage = 2 };

    explicit Failure(const QString& message, Status status = BadInput)
        : std::runtime_error(message.toStdString())
        , m_message(message)
        , m_status(status)
    {
    }

    const QString& message() const { return m_message; }
    Status status() const { return m_status; }

private:
    QString m_message;
    Status m_status;
};

} // namespace kelchart
