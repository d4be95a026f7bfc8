#pragma once

#include "CATListVal.h"
#include "CATUnicodeString.h"

// A relation seen from one of its ends: the relation's name and the direction in which it is followed (usLEFT_TO_RIGHT
// or usRIGHT_TO_LEFT of the base library). Rep nodes keep these to say which relations they display.
class QTBNodeRelationInfo
{
public:
    QTBNodeRelationInfo() = default;
    QTBNodeRelationInfo(const CATUnicodeString& usRelationName, const CATUnicodeString& usRelationDirection)
        : m_usRelationName(usRelationName), m_usRelationDirection(usRelationDirection)
    {
    }

    CATUnicodeString GetRelationName() const { return m_usRelationName; }
    CATUnicodeString GetRelationDirection() const { return m_usRelationDirection; }

    // Equal when name and direction are equal.
    friend bool operator==(const QTBNodeRelationInfo&, const QTBNodeRelationInfo&) = default;

private:
    CATUnicodeString m_usRelationName;
    CATUnicodeString m_usRelationDirection;
};

using CATListValQTBNodeRelationInfo = CATListVal<QTBNodeRelationInfo>;
