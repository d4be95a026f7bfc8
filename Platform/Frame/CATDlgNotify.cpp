#include "CATDlgNotify.h"

#include "CATApplicationFrame.h"

CATDlgNotify::CATDlgNotify(CATCommand* pParent, const CATUnicodeString& name, unsigned int style)
    : CATCommand(pParent, name), m_Style(style)
{
}

CATDlgNotify::Answer CATDlgNotify::DisplayBlocked(const CATUnicodeString& message, const CATUnicodeString& title)
{
    CATApplicationFrame::GetFrame()->ShowNotice(CATDlgNotice{title, message, m_Style});
    return Confirmed;
}
