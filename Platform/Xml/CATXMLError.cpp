#include "CATXMLError.h"

namespace {

CATUnicodeString ToText(int number)
{
    CATUnicodeString text;
    text.BuildFromNum(number);
    return text;
}

} // namespace

CATXMLError::CATXMLError(const CATUnicodeString& usSourceName, int line, int column, const CATUnicodeString& usProblem,
                         const CATUnicodeString& usExpected)
    : CATInternalError(line > 0 ? "MalformedXmlERR_1001" : "UnreadableXmlERR_1002", "CATXMLParser"),
      m_SourceName(usSourceName), m_Problem(usProblem), m_Expected(usExpected), m_Line(line), m_Column(column)
{
    SetNLSParameters(5, usSourceName, ToText(line), ToText(column), usProblem, usExpected);
}

CATXMLError::~CATXMLError() = default;
