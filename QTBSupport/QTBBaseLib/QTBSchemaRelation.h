#pragma once

#include "CATListValCATUnicodeString.h"
#include "QTBSchemaNode.h"
#include "QTBSchemaRelationship.h"

// A class of relations: between which objects they stand and what they are called from either end.
class QTBBASELIB_API QTBSchemaRelation : public QTBSchemaNode
{
public:
    QTBSchemaRelation(const CATUnicodeString& usName, const CATUnicodeString& usNlsKey);
    ~QTBSchemaRelation();

    // Classes of the objects that may stand at the left and the right end, counted from 1: those that the schema names
    // and all their subclasses. E_FAIL outside the list.
    int GetLeftObjectCount() const { return m_LeftObjectNames.Size(); }
    int GetRightObjectCount() const { return m_RightObjectNames.Size(); }
    HRESULT GetLeftObjectName(int index, CATUnicodeString* pusClassName) const;
    HRESULT GetRightObjectName(int index, CATUnicodeString* pusClassName) const;

    // The class of new objects at that end: the first that the schema names there.
    HRESULT GetLeftClassName(CATUnicodeString* pusClassName) const;
    HRESULT GetRightClassName(CATUnicodeString* pusClassName) const;

    // What the relation is called from its left and from its right end, null when it cannot be followed from there.
    QTBSchemaRelationship* GetLeftToRightRelationshipPtr() const { return m_pLeftToRightRelationship.get(); }
    QTBSchemaRelationship* GetRightToLeftRelationshipPtr() const { return m_pRightToLeftRelationship.get(); }

    // The same by direction.
    QTBSchemaRelationship* GetRelationshipPtr(unsigned char bLeftToRight) const
    {
        return bLeftToRight != FALSE ? GetLeftToRightRelationshipPtr() : GetRightToLeftRelationshipPtr();
    }

    // Whether objects of the class may stand at the end from which that direction is followed.
    bool StartsAtClass(unsigned char bLeftToRight, const CATUnicodeString& usClassName) const
    {
        return (bLeftToRight != FALSE ? m_LeftObjectNames : m_RightObjectNames).Locate(usClassName) > 0;
    }

    // Whether expanding in that direction, one level or all, is offered to the user.
    bool IsExpandOffered(unsigned char bLeftToRight, unsigned char bMultiExpand) const
    {
        const QTBSchemaRelationship* pRelationship = GetRelationshipPtr(bLeftToRight);
        return pRelationship != nullptr &&
               (bMultiExpand != FALSE ? pRelationship->GetMultiExpand() : m_usSingleExpand) == "true";
    }

    // "true" when the expand menu offers the relation, and when the create menu does.
    const CATUnicodeString& GetSingleExpand() const { return m_usSingleExpand; }
    const CATUnicodeString& GetContextCreate() const { return m_usContextCreate; }

private:
    friend class QTBSchemaReader;

    // Makes that class, which is complete, the parent and takes over what this class does not say itself.
    void Inherit(const QTBSchemaRelation& parent);

    CATListValCATUnicodeString m_LeftObjectNames;
    CATListValCATUnicodeString m_RightObjectNames;
    std::shared_ptr<QTBSchemaRelationship> m_pLeftToRightRelationship;
    std::shared_ptr<QTBSchemaRelationship> m_pRightToLeftRelationship;
    CATUnicodeString m_usSingleExpand;
    CATUnicodeString m_usContextCreate;
};
