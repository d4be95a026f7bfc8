#pragma once

#include "CATListVal.h"

class QTBSchemaRelation;

// One line of the expansion dialog: a relation and the user's choice for it. The relation belongs to the schema.
class QTBExpDlgRelExpandInfo
{
public:
    QTBExpDlgRelExpandInfo() = default;
    QTBExpDlgRelExpandInfo(QTBSchemaRelation* pSchemaRelation, unsigned char bLeftToRight, unsigned char bMultiExpand,
                           unsigned char bSelected)
        : m_pSchemaRelation(pSchemaRelation), m_bLeftToRight(bLeftToRight), m_bMultiExpand(bMultiExpand),
          m_bSelected(bSelected)
    {
    }

    QTBSchemaRelation* GetSchemaRelationPtr() const { return m_pSchemaRelation; }
    unsigned char IsLeftToRight() const { return m_bLeftToRight; }
    unsigned char IsMultiExpand() const { return m_bMultiExpand; }
    unsigned char IsSelected() const { return m_bSelected; }

    friend bool operator==(const QTBExpDlgRelExpandInfo&, const QTBExpDlgRelExpandInfo&) = default;

private:
    QTBSchemaRelation* m_pSchemaRelation = nullptr;
    unsigned char m_bLeftToRight = 0;
    unsigned char m_bMultiExpand = 0;
    unsigned char m_bSelected = 0;
};

using CATListValQTBExpDlgRelExpandInfo = CATListVal<QTBExpDlgRelExpandInfo>;
