#pragma once

#include "CATListValCATBaseUnknown_var.h"
#include "CATUnicodeString.h"
#include "QTBModelLibExport.h"
#include "QTBNodeSequence.h"

// One named relation of a node, on one side: the name and the nodes linked under it. Their order is that in which the
// tree shows children; no node stands in it twice. The three changing operations fail with a bare E_FAIL, without error
// object and trace: their callers decide whether that is an error.
class QTBMODELLIB_API QTBNodeRelationList
{
public:
    // The name never changes afterwards.
    QTBNodeRelationList(const CATUnicodeString& usName, const CATBaseUnknown_var& spFirstNode);
    QTBNodeRelationList(const QTBNodeRelationList& other);
    QTBNodeRelationList& operator=(const QTBNodeRelationList&) = delete;
    virtual ~QTBNodeRelationList();

    // E_FAIL when the node is in the list already.
    HRESULT AddValueAtBeginning(const CATBaseUnknown_var& spNode);
    HRESULT AddValueAtEnd(const CATBaseUnknown_var& spNode);
    // E_FAIL when the node is not in the list.
    HRESULT RemoveValue(const CATBaseUnknown_var& spNode);
    unsigned char ContainsValue(const CATBaseUnknown_var& spNode) const;

    CATUnicodeString GetName() const { return m_usName; }
    CATListValCATBaseUnknown_var GetValues() const { return m_Nodes.GetNodes(); }
    int GetSize() const { return m_Nodes.Size(); }
    // String hash of the name.
    unsigned int GetHashKey() const { return m_HashKey; }

    bool HasName(const CATUnicodeString& usName) const { return m_usName == usName; }

    friend bool operator==(const QTBNodeRelationList& a, const QTBNodeRelationList& b)
    {
        return a.m_HashKey == b.m_HashKey && a.m_usName == b.m_usName;
    }

private:
    CATUnicodeString m_usName;
    QTBNodeSequence m_Nodes;
    unsigned int m_HashKey;
};
