#include "QTBTraceUtil.h"

#include <iostream>
#include <sstream>
#include <string>

#include "CATIProduct.h"
#include "QTBDebugUtil.h"
#include "QTBFileUtil.h"
#include "QTBINode.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBInfoUtil.h"
#include "QTBNodeRelationInfo.h"

namespace {

bool IsTracing()
{
    return QTBDebugUtil::GetDebugStatus() != FALSE;
}

std::string Indent(int iDepth)
{
    return std::string(static_cast<std::size_t>(iDepth > 0 ? iDepth : 0), '\t');
}

// Composed before it is written: what is asked for a node's text may write lines of its own.
template <class... Piece>
void WriteLine(const Piece&... pieces)
{
    std::ostringstream line;
    (line << ... << pieces);
    std::cout << line.str() << std::endl;
}

// Whether a relation has both its objects; one that has just been read has not.
bool IsLinked(const QTBIPdmRelNode_var& spIPdmRelNode)
{
    const QTBINodeRelations_var spINodeRelations(spIPdmRelNode);
    CATListValCATBaseUnknown_var leftNodes;
    CATListValCATBaseUnknown_var rightNodes;
    return spINodeRelations != NULL_var &&
           SUCCEEDED(spINodeRelations->GetAllLeftRelations(&leftNodes, TRUE, ALL_NODES)) &&
           SUCCEEDED(spINodeRelations->GetAllRightRelations(&rightNodes, TRUE, ALL_NODES)) && leftNodes.Size() > 0 &&
           rightNodes.Size() > 0;
}

CATUnicodeString GetKey(const CATBaseUnknown_var& spNode)
{
    CATUnicodeString usKey;
    const QTBINodeAttributes_var spINodeAttributes(spNode);
    if (spINodeAttributes != NULL_var) {
        spINodeAttributes->GetKey(&usKey);
    }
    return usKey;
}

// One side of a node's relations.
struct Side
{
    const char* title;
    HRESULT (QTBINodeRelations::*getNames)(CATListValCATUnicodeString*, const unsigned char&);
    HRESULT(QTBINodeRelations::*getNodes)
    (const CATUnicodeString&, CATListValCATBaseUnknown_var*, const NodesToRetrieve&);
};

constexpr Side RIGHT{"Right", &QTBINodeRelations::GetRightRelationNames, &QTBINodeRelations::GetRightNodeList};
constexpr Side LEFT{"Left", &QTBINodeRelations::GetLeftRelationNames, &QTBINodeRelations::GetLeftNodeList};

// What a person knows a product by: the instance's name and the part number in parentheses, or the only one of them;
// else the name of its file. Empty for a component that is no product.
CATUnicodeString GetProductName(const CATBaseUnknown_var& spNode)
{
    const CATIProduct_var spIProduct(spNode);
    CATUnicodeString usName;
    if (spIProduct == NULL_var) {
        return usName;
    }
    const CATUnicodeString usPartNumber = spIProduct->GetPartNumber();
    if (FAILED(spIProduct->GetPrdInstanceName(&usName)) || usName.IsEmpty()) {
        usName = usPartNumber;
    } else if (!usPartNumber.IsEmpty()) {
        usName = usName + " (" + usPartNumber + ")";
    }
    if (usName.IsEmpty()) {
        QTBFileUtil::GetReferenceFileName(spIProduct, &usName, nullptr);
    }
    return usName;
}

HRESULT PrintRelationsOfSide(QTBINodeRelations& relations, const Side& side)
{
    CATListValCATUnicodeString names;
    HRESULT hr = (relations.*side.getNames)(&names, FALSE);
    for (int i = 1; SUCCEEDED(hr) && i <= names.Size(); ++i) {
        CATListValCATBaseUnknown_var nodes;
        hr = (relations.*side.getNodes)(names[i], &nodes, ALL_NODES);
        for (const CATBaseUnknown_var& spNode : nodes) {
            WriteLine("\t", side.title, ":[", names[i], "] ", QTBTraceUtil::GetNodeString(spNode, TRUE));
        }
    }
    return hr;
}

} // namespace

CATUnicodeString QTBTraceUtil::GetNodeString(const CATBaseUnknown_var& spNode, const unsigned char& bWithKey)
{
    if (!spNode) {
        return "NULL_var";
    }
    CATUnicodeString usNodeString;
    CATUnicodeString usDescription;
    const QTBINode_var spINode(spNode);
    if (spINode == NULL_var || FAILED(spINode->GetPdmClass(&usNodeString))) {
        usNodeString = GetProductName(spNode);
        if (usNodeString.IsEmpty()) {
            usNodeString = spNode->IsA();
        }
    }
    if (spINode != NULL_var && SUCCEEDED(spINode->GetNodeDescriptionString(&usDescription)) &&
        !usDescription.IsEmpty()) {
        usNodeString += " '";
        usNodeString += usDescription;
        usNodeString += "'";
    }
    if (bWithKey != FALSE) {
        usNodeString += " [";
        usNodeString += GetKey(spNode);
        usNodeString += "]";
    }
    return usNodeString;
}

HRESULT QTBTraceUtil::PrintQtbAttributes(const CATBaseUnknown_var& spNode, int iDepth)
{
    const QTBINodeAttributes_var spINodeAttributes(spNode);
    if (spINodeAttributes == NULL_var) {
        return E_FAIL;
    }
    if (!IsTracing()) {
        return S_OK;
    }
    CATListValCATUnicodeString names;
    if (const HRESULT hr = spINodeAttributes->GetAllAttributeNames(&names); FAILED(hr)) {
        return hr;
    }
    const std::string indent = Indent(iDepth);
    WriteLine(indent, "Attributes of ", GetNodeString(spNode, TRUE), ":");
    for (const CATUnicodeString& usName : names) {
        CATUnicodeString usDataType;
        CATUnicodeString usValue;
        spINodeAttributes->GetAttributeDataType(usName, &usDataType);
        if (SUCCEEDED(spINodeAttributes->GetStringAttributeValue(usName, &usValue, FALSE, FALSE))) {
            usValue = ":[" + usValue + "]";
        }
        WriteLine(indent, "\t", usName, " (", usDataType, ")", usValue);
    }
    return S_OK;
}

HRESULT QTBTraceUtil::PrintQtbRelations(const CATBaseUnknown_var& spNode)
{
    const QTBINodeRelations_var spINodeRelations(spNode);
    if (spINodeRelations == NULL_var) {
        return E_FAIL;
    }
    if (!IsTracing()) {
        return S_OK;
    }
    WriteLine("Relations of ", GetNodeString(spNode, TRUE), ":");
    const HRESULT hr = PrintRelationsOfSide(*spINodeRelations, RIGHT);
    return FAILED(hr) ? hr : PrintRelationsOfSide(*spINodeRelations, LEFT);
}

HRESULT QTBTraceUtil::PrintNodeRelationInfo(const QTBNodeRelationInfo& NodeRelationInfo)
{
    if (IsTracing()) {
        WriteLine("relation:[", NodeRelationInfo.GetRelationName(), "], direction:[",
                  NodeRelationInfo.GetRelationDirection(), "]");
    }
    return S_OK;
}

HRESULT QTBTraceUtil::PrintPdmNodeInfo(const QTBIPdmNode_var& spIPdmNode, const CATUnicodeString& usTitle)
{
    if (spIPdmNode == NULL_var) {
        return E_FAIL;
    }
    if (!IsTracing()) {
        return S_OK;
    }
    int iActionIndex = 0;
    if (const HRESULT hr = QTBInfoUtil::GetActionIndex(spIPdmNode, &iActionIndex); FAILED(hr)) {
        return hr;
    }
    CATUnicodeString usObjects;
    CATUnicodeString usLeftObjKey;
    CATUnicodeString usRightObjKey;
    const QTBIPdmRelNode_var spIPdmRelNode(spIPdmNode);
    if (IsLinked(spIPdmRelNode) && SUCCEEDED(spIPdmRelNode->GetObjectKeys(&usLeftObjKey, &usRightObjKey))) {
        usObjects = ", left object:[" + usLeftObjKey + "], right object:[" + usRightObjKey + "]";
    }
    WriteLine(usTitle, GetNodeString(spIPdmNode, TRUE), ", action index:[", iActionIndex, "]", usObjects);
    return S_OK;
}

HRESULT QTBTraceUtil::PrintStringList(const CATListValCATUnicodeString& list)
{
    if (IsTracing()) {
        for (int i = 1; i <= list.Size(); ++i) {
            std::cout << "\t" << i << ": " << list[i] << std::endl;
        }
    }
    return S_OK;
}
