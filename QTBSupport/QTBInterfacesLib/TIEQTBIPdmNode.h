#pragma once

#include "CATTie.h"
#include "QTBIPdmNode.h"
#include "TIEQTBINode.h"

// Interface object of QTBIPdmNode; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIEQTBIPdmNode : public TIEQTBINode<Tie, Target>
{
public:
    using TIEQTBINode<Tie, Target>::TIEQTBINode;

    HRESULT GetRepNodes(CATListValCATBaseUnknown_var* pListOfRepNodes, const QTBIRepNodeCont_var& spIRepNodeCont) override
    {
        return Target::Of(*this)->GetRepNodes(pListOfRepNodes, spIRepNodeCont);
    }

    HRESULT RedrawRepNodes(unsigned char* pbRecursive) override
    {
        return Target::Of(*this)->RedrawRepNodes(pbRecursive);
    }

    HRESULT PreselectRepNodes() override
    {
        return Target::Of(*this)->PreselectRepNodes();
    }

    HRESULT HighlightRepNodes(const unsigned char& bEmptyHighlightFirst, unsigned char* pbHighlightObjectOfRelation) override
    {
        return Target::Of(*this)->HighlightRepNodes(bEmptyHighlightFirst, pbHighlightObjectOfRelation);
    }

    HRESULT GetClassName(CATUnicodeString* pusClassName) override
    {
        return Target::Of(*this)->GetClassName(pusClassName);
    }

    HRESULT GetDescriptionString(CATUnicodeString* pusDescriptionString) override
    {
        return Target::Of(*this)->GetDescriptionString(pusDescriptionString);
    }

    HRESULT GetQtbAttr(const CATUnicodeString& usAttrName, unsigned char* pbAttrValue, const unsigned char& bPrintErrorIfUndefined, unsigned char* pbAttrIsDefined, const unsigned char& bEmptyValueCounts) override
    {
        return Target::Of(*this)->GetQtbAttr(usAttrName, pbAttrValue, bPrintErrorIfUndefined, pbAttrIsDefined, bEmptyValueCounts);
    }

    HRESULT GetQtbAttr(const CATUnicodeString& usAttrName, CATListValCATUnicodeString* pAttrValues, const unsigned char& bPrintErrorIfUndefined, unsigned char* pbAttrIsDefined, const unsigned char& bEmptyValueCounts) override
    {
        return Target::Of(*this)->GetQtbAttr(usAttrName, pAttrValues, bPrintErrorIfUndefined, pbAttrIsDefined, bEmptyValueCounts);
    }

    HRESULT GetQtbAttr(const CATUnicodeString& usAttrName, CATUnicodeString* pusAttrValue, const unsigned char& bPrintErrorIfUndefined, unsigned char* pbAttrIsDefined, const unsigned char& bEmptyValueCounts) override
    {
        return Target::Of(*this)->GetQtbAttr(usAttrName, pusAttrValue, bPrintErrorIfUndefined, pbAttrIsDefined, bEmptyValueCounts);
    }

    HRESULT SetQtbInfoAttr(const CATUnicodeString& usAttrName, const CATUnicodeString& usAttrValue) override
    {
        return Target::Of(*this)->SetQtbInfoAttr(usAttrName, usAttrValue);
    }

    HRESULT GetQtbInfoAttr(const CATUnicodeString& usAttrName, unsigned char* pbAttrValue, const unsigned char& bPrintErrorIfUndefined, unsigned char* pbAttrIsDefined, const unsigned char& bEmptyValueCounts) override
    {
        return Target::Of(*this)->GetQtbInfoAttr(usAttrName, pbAttrValue, bPrintErrorIfUndefined, pbAttrIsDefined, bEmptyValueCounts);
    }

    HRESULT GetQtbInfoAttr(const CATUnicodeString& usAttrName, CATListValCATUnicodeString* pAttrValues, const unsigned char& bPrintErrorIfUndefined, unsigned char* pbAttrIsDefined, const unsigned char& bEmptyValueCounts) override
    {
        return Target::Of(*this)->GetQtbInfoAttr(usAttrName, pAttrValues, bPrintErrorIfUndefined, pbAttrIsDefined, bEmptyValueCounts);
    }

    HRESULT GetQtbInfoAttr(const CATUnicodeString& usAttrName, CATUnicodeString* pusAttrValue, const unsigned char& bPrintErrorIfUndefined, unsigned char* pbAttrIsDefined, const unsigned char& bEmptyValueCounts) override
    {
        return Target::Of(*this)->GetQtbInfoAttr(usAttrName, pusAttrValue, bPrintErrorIfUndefined, pbAttrIsDefined, bEmptyValueCounts);
    }

    HRESULT GetQtbInfoAttrXmlAttrVal(const CATUnicodeString& usInfoAttrName, const CATUnicodeString& usXmlAttrName, CATUnicodeString* pusXmlAttrValue) override
    {
        return Target::Of(*this)->GetQtbInfoAttrXmlAttrVal(usInfoAttrName, usXmlAttrName, pusXmlAttrValue);
    }

    HRESULT SetSchemaNodePtr(QTBSchemaNode* pSchemaNode) override
    {
        return Target::Of(*this)->SetSchemaNodePtr(pSchemaNode);
    }

    HRESULT GetSchemaNodePtr(QTBSchemaNode** ppSchemaNode) override
    {
        return Target::Of(*this)->GetSchemaNodePtr(ppSchemaNode);
    }

    HRESULT SetPdmNodeContainer(const QTBIPdmNodeCont_var& spIPdmNodeCont) override
    {
        return Target::Of(*this)->SetPdmNodeContainer(spIPdmNodeCont);
    }

    HRESULT GetPdmNodeContainer(QTBIPdmNodeCont_var* pspIPdmNodeCont) override
    {
        return Target::Of(*this)->GetPdmNodeContainer(pspIPdmNodeCont);
    }

    HRESULT IsAffectedByCurrentAction(unsigned char* pbIsAffected) override
    {
        return Target::Of(*this)->IsAffectedByCurrentAction(pbIsAffected);
    }

    HRESULT SetPdmKey() override
    {
        return Target::Of(*this)->SetPdmKey();
    }

    const CATUnicodeString& GetPdmKey() override
    {
        return Target::Of(*this)->GetPdmKey();
    }

    unsigned int GetPdmKeyHash() override
    {
        return Target::Of(*this)->GetPdmKeyHash();
    }
};
