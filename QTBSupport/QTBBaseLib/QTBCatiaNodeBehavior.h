#pragma once

#include "CATUnicodeString.h"

// Special behaviour of some products: those of a PSN node type whose part number begins with the prefix (all of that
// type for an empty one) behave as usIGNORE_NODE or usSKIP_NODE says. Whoever applies the record checks the behaviour.
class QTBCatiaNodeBehavior
{
public:
    QTBCatiaNodeBehavior(const CATUnicodeString& usNodeType, const CATUnicodeString& usPartNumberPrefix,
                         const CATUnicodeString& usBehavior)
        : m_usNodeType(usNodeType), m_usPartNumberPrefix(usPartNumberPrefix), m_usBehavior(usBehavior)
    {
    }

    const CATUnicodeString& GetNodeType() const { return m_usNodeType; }
    const CATUnicodeString& GetPartNumberPrefix() const { return m_usPartNumberPrefix; }
    const CATUnicodeString& GetBehavior() const { return m_usBehavior; }

private:
    CATUnicodeString m_usNodeType;
    CATUnicodeString m_usPartNumberPrefix;
    CATUnicodeString m_usBehavior;
};
