#include "QTBPdmGraphUtil.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "QTBGlobVarsUtil.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBInfoUtil.h"
#include "QTBPdmSessionUtil.h"
#include "QTBSchemaUtil.h"

namespace {

const CATUnicodeString DEFAULT_ROOT_NODE("DEFAULT_ROOT_NODE");

template <class T>
void Give(T* pOut, const T& value)
{
    if (pOut != nullptr) {
        *pOut = value;
    }
}

// The container that the node belongs to; the session's for a node that has none.
QTBIPdmNodeCont_var GetContainerOf(const QTBIPdmNode_var& spIPdmNode)
{
    QTBIPdmNodeCont_var spIPdmNodeCont;
    if (FAILED(spIPdmNode->GetPdmNodeContainer(&spIPdmNodeCont))) {
        QTBGlobVarsUtil::GetGlobalPdmNodeContainer(&spIPdmNodeCont);
    }
    return spIPdmNodeCont;
}

// The object node under that key, empty when the graph has none.
QTBIPdmNode_var FindObject(const QTBIPdmNodeCont_var& spIPdmNodeCont, const CATUnicodeString& usKey)
{
    QTBIPdmNode_var spIPdmNode;
    unsigned char bNodeFound = FALSE;
    if (usKey.IsEmpty() || FAILED(spIPdmNodeCont->GetPdmNodeByKey(usKey, &spIPdmNode, &bNodeFound)) ||
        bNodeFound == FALSE || QTBIPdmObjNode_var(spIPdmNode) == NULL_var) {
        return NULL_var;
    }
    return spIPdmNode;
}

// Attribute that the session settings name, empty when there is none.
CATUnicodeString ReadSessionAttribute(const QTBIPdmNode_var& spIPdmNode, QTBPdmSessionStringAttr attr)
{
    CATUnicodeString usAttrName;
    CATUnicodeString usValue;
    const QTBINodeAttributes_var spINodeAttributes(spIPdmNode);
    unsigned char bIsDefined = FALSE;
    if (spINodeAttributes == NULL_var ||
        FAILED(QTBPdmSessionUtil::GetPdmSessionStringAttrValue(attr, &usAttrName, FALSE)) ||
        FAILED(spINodeAttributes->AttributeIsDefined(usAttrName, &bIsDefined)) || bIsDefined == FALSE ||
        FAILED(spINodeAttributes->GetStringAttributeValue(usAttrName, &usValue, FALSE, FALSE))) {
        return CATUnicodeString();
    }
    return usValue;
}

enum class CharKind
{
    Digit,
    Letter,
    Other
};

CharKind KindOf(char c)
{
    if (c >= '0' && c <= '9') {
        return CharKind::Digit;
    }
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ? CharKind::Letter : CharKind::Other;
}

// The next run of characters of one kind, a single character of any other; it is taken off the text.
std::string_view TakeRun(std::string_view* pText, CharKind* pKind)
{
    *pKind = KindOf(pText->front());
    std::size_t length = 1;
    while (*pKind != CharKind::Other && length < pText->size() && KindOf((*pText)[length]) == *pKind) {
        ++length;
    }
    const std::string_view run = pText->substr(0, length);
    pText->remove_prefix(length);
    return run;
}

// Less than, equal to or greater than 0, as a version is older than, the same as or newer than another.
int CompareVersions(std::string_view a, std::string_view b)
{
    while (!a.empty() && !b.empty()) {
        CharKind kindOfA{};
        CharKind kindOfB{};
        std::string_view runOfA = TakeRun(&a, &kindOfA);
        std::string_view runOfB = TakeRun(&b, &kindOfB);
        if (kindOfA == CharKind::Digit && kindOfB == CharKind::Digit) {
            runOfA.remove_prefix(std::min(runOfA.find_first_not_of('0'), runOfA.size()));
            runOfB.remove_prefix(std::min(runOfB.find_first_not_of('0'), runOfB.size()));
        }
        if (kindOfA == kindOfB && kindOfA != CharKind::Other && runOfA.size() != runOfB.size()) {
            return runOfA.size() < runOfB.size() ? -1 : 1;
        }
        if (const int order = runOfA.compare(runOfB); order != 0) {
            return order;
        }
    }
    return static_cast<int>(!a.empty()) - static_cast<int>(!b.empty());
}

// What an object is a version of, and which version it is.
struct ItemVersion
{
    explicit ItemVersion(const QTBIPdmNode_var& spIPdmNode)
    {
        const QTBIPdmObjNode_var spIPdmObjNode(spIPdmNode);
        const QTBINodeAttributes_var spINodeAttributes(spIPdmNode);
        CATUnicodeString usClass;
        if (spIPdmObjNode != NULL_var && SUCCEEDED(spIPdmObjNode->GetClassAttr(&usClass, nullptr))) {
            CATUnicodeString usName = ReadSessionAttribute(spIPdmNode, QTB_PDM_SESSION_PART_NUMBER_ATTR);
            const char* separator = "\nN";
            if (usName.IsEmpty()) {
                usName = ReadSessionAttribute(spIPdmNode, QTB_PDM_SESSION_FILE_NAME_ATTR);
                separator = "\nF";
            }
            if (!usName.IsEmpty()) {
                usItem = usClass + separator + usName;
            }
        }
        if (usItem.IsEmpty() && spINodeAttributes != NULL_var) {
            spINodeAttributes->GetKey(&usItem);
        }
        QTBInfoUtil::GetPdmVersionInfo(spIPdmNode, &bIsNewest, nullptr, &usVersion, nullptr, &usSubVersion);
    }

    int Compare(const ItemVersion& other) const
    {
        if ((bIsNewest != FALSE) != (other.bIsNewest != FALSE)) {
            return bIsNewest != FALSE ? 1 : -1;
        }
        const int order = CompareVersions(usVersion.View(), other.usVersion.View());
        return order != 0 ? order : CompareVersions(usSubVersion.View(), other.usSubVersion.View());
    }

    CATUnicodeString usItem;
    CATUnicodeString usVersion;
    CATUnicodeString usSubVersion;
    unsigned char bIsNewest = FALSE;
};

} // namespace

HRESULT QTBPdmGraphUtil::GetCorrespondingObjNodesByPdmKey(const QTBIPdmRelNode_var& spIPdmRelNode,
                                                          QTBIPdmNode_var* pspIPdmNodeOnLeft,
                                                          QTBIPdmNode_var* pspIPdmNodeOnRight)
{
    if (pspIPdmNodeOnLeft == nullptr || pspIPdmNodeOnRight == nullptr) {
        return E_POINTER;
    }
    *pspIPdmNodeOnLeft = NULL_var;
    *pspIPdmNodeOnRight = NULL_var;
    if (spIPdmRelNode == NULL_var) {
        return E_FAIL;
    }
    CATUnicodeString usLeftKey;
    CATUnicodeString usRightKey;
    const QTBIPdmNodeCont_var spIPdmNodeCont = GetContainerOf(spIPdmRelNode);
    if (spIPdmNodeCont == NULL_var || FAILED(spIPdmRelNode->GetLeftRelationshipAttr(&usLeftKey, nullptr)) ||
        FAILED(spIPdmRelNode->GetRightRelationshipAttr(&usRightKey, nullptr))) {
        return E_FAIL;
    }
    const QTBIPdmNode_var spIPdmNodeOnLeft = FindObject(spIPdmNodeCont, usLeftKey);
    const QTBIPdmNode_var spIPdmNodeOnRight = FindObject(spIPdmNodeCont, usRightKey);
    if (spIPdmNodeOnLeft == NULL_var || spIPdmNodeOnRight == NULL_var) {
        return E_FAIL;
    }
    *pspIPdmNodeOnLeft = spIPdmNodeOnLeft;
    *pspIPdmNodeOnRight = spIPdmNodeOnRight;
    return S_OK;
}

HRESULT QTBPdmGraphUtil::FilterForNewestQtbVersion(CATListValCATBaseUnknown_var* pPdmObjs,
                                                   CATListValCATBaseUnknown_var* pPdmRels)
{
    if (pPdmObjs == nullptr) {
        return E_POINTER;
    }
    if (pPdmRels != nullptr && pPdmRels->Size() != pPdmObjs->Size()) {
        return E_FAIL;
    }
    std::vector<ItemVersion> versions;
    versions.reserve(static_cast<std::size_t>(pPdmObjs->Size()));
    std::unordered_map<CATUnicodeString, std::size_t> newest;
    for (const CATBaseUnknown_var& spObject : *pPdmObjs) {
        versions.emplace_back(QTBIPdmNode_var(spObject));
        const auto [found, isNew] = newest.try_emplace(versions.back().usItem, versions.size() - 1);
        if (!isNew && versions.back().Compare(versions[found->second]) > 0) {
            found->second = versions.size() - 1;
        }
    }

    CATListValCATBaseUnknown_var PdmObjs;
    CATListValCATBaseUnknown_var PdmRels;
    for (int i = 1; i <= pPdmObjs->Size(); ++i) {
        const ItemVersion& version = versions[static_cast<std::size_t>(i - 1)];
        if (version.Compare(versions[newest.at(version.usItem)]) == 0) {
            PdmObjs.Append((*pPdmObjs)[i]);
            if (pPdmRels != nullptr) {
                PdmRels.Append((*pPdmRels)[i]);
            }
        }
    }
    *pPdmObjs = PdmObjs;
    if (pPdmRels != nullptr) {
        *pPdmRels = PdmRels;
    }
    return S_OK;
}

bool QTBPdmGraphUtil::IsNewerVersion(const CATUnicodeString& usVersion, const CATUnicodeString& usThanVersion)
{
    return CompareVersions(usVersion.View(), usThanVersion.View()) > 0;
}

HRESULT QTBPdmGraphUtil::FilterForNewestActionIndex(CATListValCATBaseUnknown_var* pPdmNodes)
{
    if (pPdmNodes == nullptr) {
        return E_POINTER;
    }
    int iNewest = 0;
    CATListValCATBaseUnknown_var PdmNodes;
    for (const CATBaseUnknown_var& spNode : *pPdmNodes) {
        const QTBIPdmNode_var spIPdmNode(spNode);
        if (spIPdmNode == NULL_var) {
            continue;
        }
        int iActionIndex = 0;
        if (FAILED(QTBInfoUtil::GetActionIndex(spIPdmNode, &iActionIndex))) {
            return E_FAIL;
        }
        if (iActionIndex > iNewest) {
            iNewest = iActionIndex;
            PdmNodes.RemoveAll();
        }
        if (iActionIndex == iNewest) {
            PdmNodes.Append(spNode);
        }
    }
    *pPdmNodes = PdmNodes;
    return S_OK;
}

HRESULT QTBPdmGraphUtil::IsPartNode(const QTBIPdmObjNode_var& spIPdmObjNode, unsigned char* pbIsPart,
                                    CATUnicodeString* pusClassName, unsigned char* pbCanHaveSubParts)
{
    CATUnicodeString usClassName;
    CATListValCATUnicodeString PartClassNames;
    CATListValCATUnicodeString ClassNamesWithSubParts;
    if (spIPdmObjNode == NULL_var || FAILED(spIPdmObjNode->GetClassAttr(&usClassName, nullptr)) ||
        FAILED(QTBSchemaUtil::GetPartClassNames(&PartClassNames, &ClassNamesWithSubParts, nullptr))) {
        return E_FAIL;
    }
    const unsigned char bIsPart = PartClassNames.Locate(usClassName) > 0 ? TRUE : FALSE;
    const unsigned char bCanHaveSubParts =
        bIsPart != FALSE && ClassNamesWithSubParts.Locate(usClassName) > 0 ? TRUE : FALSE;
    Give(pbIsPart, bIsPart);
    Give(pusClassName, bIsPart != FALSE ? usClassName : CATUnicodeString());
    Give(pbCanHaveSubParts, bCanHaveSubParts);
    return S_OK;
}

HRESULT QTBPdmGraphUtil::IsCatiaFileNode(const QTBIPdmObjNode_var& spIPdmObjNode, unsigned char* pbIsCatiaFile,
                                         CATUnicodeString* pusClassName, QTBCatiaFileClass* pFileClass)
{
    CATUnicodeString usClassName;
    if (spIPdmObjNode == NULL_var || FAILED(spIPdmObjNode->GetClassAttr(&usClassName, nullptr))) {
        return E_FAIL;
    }
    QTBCatiaFileClass fileClass = QTB_CATIA_FILE_CLASS_UNKNOWN;
    if (FAILED(QTBPdmSessionUtil::CatDocTypePdmToCat(usClassName, nullptr, &fileClass))) {
        fileClass = QTB_CATIA_FILE_CLASS_UNKNOWN;
    }
    const unsigned char bIsCatiaFile = fileClass != QTB_CATIA_FILE_CLASS_UNKNOWN ? TRUE : FALSE;
    Give(pbIsCatiaFile, bIsCatiaFile);
    Give(pusClassName, bIsCatiaFile != FALSE ? usClassName : CATUnicodeString());
    Give(pFileClass, fileClass);
    return S_OK;
}

HRESULT QTBPdmGraphUtil::IsPartToPartRelationNode(const QTBIPdmRelNode_var& spIPdmRelNode,
                                                  unsigned char* pbIsPartToPart)
{
    if (spIPdmRelNode == NULL_var || pbIsPartToPart == nullptr) {
        return E_FAIL;
    }
    QTBIPdmObjNode_var spLeftObject;
    QTBIPdmObjNode_var spRightObject;
    unsigned char bLeftIsPart = FALSE;
    unsigned char bRightIsPart = FALSE;
    *pbIsPartToPart = SUCCEEDED(spIPdmRelNode->GetLeftObject(&spLeftObject)) &&
                              SUCCEEDED(IsPartNode(spLeftObject, &bLeftIsPart, nullptr, nullptr)) &&
                              bLeftIsPart != FALSE && SUCCEEDED(spIPdmRelNode->GetRightObject(&spRightObject)) &&
                              SUCCEEDED(IsPartNode(spRightObject, &bRightIsPart, nullptr, nullptr)) &&
                              bRightIsPart != FALSE
                          ? TRUE
                          : FALSE;
    return S_OK;
}

HRESULT QTBPdmGraphUtil::IsDefaultRootNode(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsDefaultRoot)
{
    const QTBINodeAttributes_var spINodeAttributes(spIPdmNode);
    CATUnicodeString usKey;
    if (spINodeAttributes == NULL_var || pbIsDefaultRoot == nullptr || FAILED(spINodeAttributes->GetKey(&usKey))) {
        return E_FAIL;
    }
    *pbIsDefaultRoot = usKey == DEFAULT_ROOT_NODE ? TRUE : FALSE;
    return S_OK;
}

HRESULT QTBPdmGraphUtil::GetCatiaFileNodeInformation(const QTBIPdmObjNode_var& spIPdmObjNode,
                                                     CATUnicodeString* pusFileName, CATUnicodeString* pusFileType,
                                                     QTBCatiaFileClass* pFileClass, unsigned char* pbIsCatiaFile)
{
    unsigned char bIsCatiaFile = FALSE;
    QTBCatiaFileClass fileClass = QTB_CATIA_FILE_CLASS_UNKNOWN;
    if (const HRESULT hr = IsCatiaFileNode(spIPdmObjNode, &bIsCatiaFile, nullptr, &fileClass); FAILED(hr)) {
        return hr;
    }
    Give(pusFileName, bIsCatiaFile != FALSE ? ReadSessionAttribute(spIPdmObjNode, QTB_PDM_SESSION_FILE_NAME_ATTR)
                                            : CATUnicodeString());
    Give(pusFileType, QTBPdmSessionUtil::GetDocTypeOfFileClass(fileClass));
    Give(pFileClass, fileClass);
    Give(pbIsCatiaFile, bIsCatiaFile);
    return S_OK;
}

HRESULT QTBPdmGraphUtil::SetAdd(const CATBaseUnknown_var& spNode, CATListValCATBaseUnknown_var* pNodes,
                                std::unordered_set<const CATBaseUnknown*>* pSetOfNodes)
{
    if (spNode == NULL_var || pNodes == nullptr) {
        return E_FAIL;
    }
    const bool isThere =
        pSetOfNodes != nullptr
            ? !pSetOfNodes->insert(spNode.Get()).second
            : std::any_of(pNodes->begin(), pNodes->end(),
                          [&spNode](const CATBaseUnknown_var& spOther) { return spOther.Get() == spNode.Get(); });
    if (!isThere) {
        pNodes->Append(spNode);
    }
    return S_OK;
}
