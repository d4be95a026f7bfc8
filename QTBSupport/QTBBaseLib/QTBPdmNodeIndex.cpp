#include "QTBPdmNodeIndex.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "QTBFileUtil.h"
#include "QTBGlobVarsUtil.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBInfoUtil.h"
#include "QTBLoadManager.h"
#include "QTBPdmGraphUtil.h"

namespace {

// Text of an instance of that name below a father.
CATUnicodeString MakeInstanceText(const CATUnicodeString& usFatherKey, const CATUnicodeString& usInstanceName)
{
    return usFatherKey + "\n" + usInstanceName;
}

// The node that the graph holds under that key, empty when it holds none.
CATBaseUnknown_var FindNode(const QTBIPdmNodeCont_var& spIPdmNodeCont, const CATUnicodeString& usKey)
{
    QTBIPdmNode_var spIPdmNode;
    unsigned char bNodeFound = FALSE;
    if (FAILED(spIPdmNodeCont->GetPdmNodeByKey(usKey, &spIPdmNode, &bNodeFound))) {
        return NULL_var;
    }
    return spIPdmNode;
}

} // namespace

void QTBPdmNodeIndex::NodeWasRead(const CATUnicodeString& usNodeKey)
{
    if (!m_bBuilt) {
        return;
    }
    if (m_ReadKeys.size() >= GetLimit()) {
        // More was read than is worth entering one by one.
        *this = QTBPdmNodeIndex();
        return;
    }
    try {
        m_ReadKeys.push_back(usNodeKey);
    } catch (...) {
        *this = QTBPdmNodeIndex();
        throw;
    }
}

CATListValCATBaseUnknown_var QTBPdmNodeIndex::FindByPartNumber(const CATUnicodeString& usPartNumber)
{
    return Find(&QTBPdmNodeIndex::m_ByPartNumber, usPartNumber);
}

CATListValCATBaseUnknown_var QTBPdmNodeIndex::FindFilesByObjInfo(const CATUnicodeString& usObjInfo)
{
    return Find(&QTBPdmNodeIndex::m_ByObjInfo, usObjInfo);
}

CATListValCATBaseUnknown_var QTBPdmNodeIndex::FindRelationsByInstance(const CATUnicodeString& usFatherKey,
                                                                      const CATUnicodeString& usInstanceName)
{
    return Find(&QTBPdmNodeIndex::m_ByInstance, MakeInstanceText(usFatherKey, usInstanceName));
}

CATListValCATBaseUnknown_var QTBPdmNodeIndex::FindFileRelations(const CATUnicodeString& usFatherKey)
{
    return Find(&QTBPdmNodeIndex::m_FileRelations, usFatherKey);
}

CATListValCATBaseUnknown_var QTBPdmNodeIndex::FindRelationsByInstanceKey(const CATUnicodeString& usInstanceKey)
{
    return Find(&QTBPdmNodeIndex::m_ByInstanceKey, usInstanceKey);
}

CATListValCATBaseUnknown_var QTBPdmNodeIndex::Find(Entries QTBPdmNodeIndex::*pIndex, const CATUnicodeString& usText)
{
    CATListValCATBaseUnknown_var Nodes;
    QTBIPdmNodeCont_var spIPdmNodeCont;
    if (FAILED(QTBGlobVarsUtil::GetGlobalPdmNodeContainer(&spIPdmNodeCont)) || spIPdmNodeCont == NULL_var) {
        return Nodes;
    }
    BringUpToDate(spIPdmNodeCont);
    Entries& entries = this->*pIndex;
    const auto entry = entries.find(usText);
    if (entry == entries.end()) {
        return Nodes;
    }
    // Keys of nodes that left the graph, and second ones of the same node, are given up on this occasion.
    Keys& keys = entry->second;
    std::unordered_set<const CATBaseUnknown*> found;
    m_EntryCount -= std::erase_if(keys, [&](const CATUnicodeString& usKey) {
        const CATBaseUnknown_var spNode = FindNode(spIPdmNodeCont, usKey);
        if (spNode == NULL_var || !found.insert(spNode.Get()).second) {
            return true;
        }
        Nodes.Append(spNode);
        return false;
    });
    if (keys.empty()) {
        entries.erase(entry);
    }
    return Nodes;
}

void QTBPdmNodeIndex::BringUpToDate(const QTBIPdmNodeCont_var& spIPdmNodeCont)
{
    if (!m_bBuilt || m_EntryCount > GetLimit()) {
        Build(spIPdmNodeCont);
        return;
    }
    const Keys readKeys = std::exchange(m_ReadKeys, Keys());
    try {
        for (const CATUnicodeString& usKey : readKeys) {
            EnterNode(FindNode(spIPdmNodeCont, usKey));
        }
    } catch (...) {
        // An index that does not know all nodes is none.
        *this = QTBPdmNodeIndex();
        throw;
    }
}

void QTBPdmNodeIndex::Build(const QTBIPdmNodeCont_var& spIPdmNodeCont)
{
    *this = QTBPdmNodeIndex();
    CATListValCATBaseUnknown_var Nodes;
    if (FAILED(spIPdmNodeCont->GetAllPdmNodes(&Nodes))) {
        return;
    }
    for (const CATBaseUnknown_var& spNode : Nodes) {
        EnterNode(spNode);
    }
    m_EntriesBuilt = m_EntryCount;
    m_bBuilt = true;
}

void QTBPdmNodeIndex::EnterNode(const CATBaseUnknown_var& spNode)
{
    const QTBINodeAttributes_var spINodeAttributes(spNode);
    CATUnicodeString usKey;
    if (spINodeAttributes == NULL_var || FAILED(spINodeAttributes->GetKey(&usKey))) {
        return;
    }
    if (const QTBIPdmObjNode_var spIPdmObjNode(spNode); spIPdmObjNode != NULL_var) {
        EnterObject(spIPdmObjNode, usKey);
    } else if (const QTBIPdmRelNode_var spIPdmRelNode(spNode); spIPdmRelNode != NULL_var) {
        EnterRelation(spIPdmRelNode, usKey);
    }
}

void QTBPdmNodeIndex::EnterObject(const QTBIPdmObjNode_var& spIPdmObjNode, const CATUnicodeString& usKey)
{
    CATUnicodeString usPartNumber;
    if (SUCCEEDED(QTBInfoUtil::GetCatiaPartNumberFromPdm(spIPdmObjNode, &usPartNumber, FALSE, TRUE))) {
        Enter(m_ByPartNumber, usPartNumber, usKey);
    }
    if (const CATUnicodeString usObjInfo = GetObjInfo(spIPdmObjNode); !usObjInfo.IsEmpty()) {
        Enter(m_ByObjInfo, usObjInfo, usKey);
    }
}

void QTBPdmNodeIndex::EnterRelation(const QTBIPdmRelNode_var& spIPdmRelNode, const CATUnicodeString& usKey)
{
    CATUnicodeString usFatherKey;
    CATUnicodeString usChildKey;
    QTBIPdmObjNode_var spRightObject;
    if (FAILED(spIPdmRelNode->GetObjectKeys(&usFatherKey, &usChildKey)) ||
        FAILED(spIPdmRelNode->GetRightObject(&spRightObject))) {
        return;
    }
    unsigned char bIsCatiaFile = FALSE;
    if (SUCCEEDED(QTBPdmGraphUtil::IsCatiaFileNode(spRightObject, &bIsCatiaFile, nullptr, nullptr)) &&
        bIsCatiaFile != FALSE) {
        Enter(m_FileRelations, usFatherKey, usKey);
    }
    CATListValCATUnicodeString InstanceNames;
    if (FAILED(QTBInfoUtil::GetCatiaInstanceNameListFromPdm(spIPdmRelNode, &InstanceNames))) {
        return;
    }
    for (const CATUnicodeString& usInstanceName : InstanceNames) {
        if (!usInstanceName.IsEmpty()) {
            Enter(m_ByInstance, MakeInstanceText(usFatherKey, usInstanceName), usKey);
            Enter(m_ByInstanceKey, QTBLoadManager::MakeInstanceKey(usKey, usInstanceName), usKey);
        }
    }
}

void QTBPdmNodeIndex::Enter(Entries& entries, const CATUnicodeString& usText, const CATUnicodeString& usKey)
{
    Keys& keys = entries[usText];
    if (keys.size() > FEW || std::find(keys.begin(), keys.end(), usKey) == keys.end()) {
        keys.push_back(usKey);
        ++m_EntryCount;
    }
}

CATUnicodeString QTBPdmNodeIndex::GetObjInfo(const QTBIPdmObjNode_var& spIPdmObjNode)
{
    CATUnicodeString usFileName;
    CATUnicodeString usClassName;
    unsigned char bIsCatiaFile = FALSE;
    if (FAILED(QTBPdmGraphUtil::GetCatiaFileNodeInformation(spIPdmObjNode, &usFileName, nullptr, nullptr,
                                                            &bIsCatiaFile)) ||
        bIsCatiaFile == FALSE || usFileName.IsEmpty() || FAILED(spIPdmObjNode->GetClassAttr(&usClassName, nullptr))) {
        return CATUnicodeString();
    }
    CATUnicodeString usName;
    QTBFileUtil::GetFileNameWithoutExtension(usFileName, &usName);
    return usName + "/" + usClassName;
}
