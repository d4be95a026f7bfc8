#pragma once

#include "CATCommand.h"

// Notice to the user: a text, a title and a button.
class PLATFORM_API CATDlgNotify : public CATCommand
{
public:
    // What DisplayBlocked answers.
    enum Answer
    {
        Confirmed = 1
    };

    // pParent is the window in front of which the notice appears. style is kept for whoever shows the notice.
    CATDlgNotify(CATCommand* pParent, const CATUnicodeString& name, unsigned int style);

    unsigned int GetStyle() const { return m_Style; }

    // Shows the notice and waits until the user has confirmed it. The frame passes it to the application's notice
    // handler and takes it down (see CATApplicationFrame); without a handler nobody is waited for.
    Answer DisplayBlocked(const CATUnicodeString& message, const CATUnicodeString& title);

private:
    unsigned int m_Style;
};
