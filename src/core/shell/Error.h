#pragma once
// The one exception family of the core. Expected refusals are returned as results
// carrying their message; these are for faults.

#include <stdexcept>
#include <string>

namespace zarvion {

//! Base of every exception thrown by the core.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

//! A file that does not have the layout its reader expects.
class ParseError : public Error {
public:
    ParseError(std::string file, int line, int column, const std::string& what)
        : Error(file + ":" + std::to_string(line) + (column > 0 ? ":" + std::to_string(column) : "") +
                ": " + what),
          m_file(std::move(file)), m_line(line), m_column(column) {}
    const std::string& file() const { return m_file; }
    int line() const { return m_line; }
    int column() const { return m_column; }

private:
    std::string m_file;
    int m_line;
    int m_column;
};

//! A failure of the integrator, carrying the CVODE flag name.
class SolverError : public Error {
public:
    SolverError(std::string flagName, const std::string& what)
        : Error(what + " (" + flagName + ")"), m_flagName(std::move(flagName)) {}
    const std::string& flagName() const { return m_flagName; }

private:
    std::string m_flagName;
};

} // namespace zarvion
