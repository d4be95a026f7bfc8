#pragma once

#include <cstdlib>
#include <optional>
#include <string>

// Sets a variable of the environment for as long as it lives.
class QTBTestEnvironment
{
public:
    QTBTestEnvironment(const char* name, const std::string& value) : m_Name(name)
    {
        if (const char* former = std::getenv(name); former != nullptr) {
            m_Former = former;
        }
        setenv(name, value.c_str(), 1);
    }
    QTBTestEnvironment(const QTBTestEnvironment&) = delete;
    QTBTestEnvironment& operator=(const QTBTestEnvironment&) = delete;
    ~QTBTestEnvironment()
    {
        if (m_Former) {
            setenv(m_Name.c_str(), m_Former->c_str(), 1);
        } else {
            unsetenv(m_Name.c_str());
        }
    }

private:
    std::string m_Name;
    std::optional<std::string> m_Former;
};
