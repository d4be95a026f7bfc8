#pragma once

#include "CATError.h"

// Why an XML text was refused: where, what was wrong there and what was expected. Message of the catalog "CATXMLParser"
// with the parameters source, line, column, problem, expectation.
class PLATFORM_API CATXMLError : public CATInternalError
{
    CATDeclareErrorClass(CATXMLError, CATInternalError)

public:
    // Line and column are counted from 1; line 0 means the source as a whole.
    CATXMLError(const CATUnicodeString& usSourceName, int line, int column, const CATUnicodeString& usProblem,
                const CATUnicodeString& usExpected);

    int GetLine() const { return m_Line; }
    int GetColumn() const { return m_Column; }
    const CATUnicodeString& GetSourceName() const { return m_SourceName; }
    const CATUnicodeString& GetProblem() const { return m_Problem; }
    const CATUnicodeString& GetExpected() const { return m_Expected; }

protected:
    ~CATXMLError() override;

private:
    CATUnicodeString m_SourceName;
    CATUnicodeString m_Problem;
    CATUnicodeString m_Expected;
    int m_Line;
    int m_Column;
};
