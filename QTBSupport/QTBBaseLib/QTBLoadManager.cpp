#include "QTBLoadManager.h"

#include <algorithm>

#include "CATError.h"
#include "QTBGlobVarsUtil.h"
#include "QTBHashTableNvSetAttribute.h"
#include "QTBHashTableUtil.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBInfoUtil.h"
#include "QTBPdmGraphUtil.h"
#include "QTBPdmNodeIndex.h"
#include "QTBProductRecords.h"

QTBLoadManager g_QTBLoadManager;

namespace {

constexpr int FIRST_BUCKET_COUNT = 100;

CATUnicodeString KeyOf(const CATBaseUnknown_var& spNode)
{
    const QTBINodeAttributes_var spINodeAttributes(spNode);
    CATUnicodeString usKey;
    if (spINodeAttributes != NULL_var) {
        spINodeAttributes->GetKey(&usKey);
    }
    return usKey;
}

CATUnicodeString PartNumberOf(const QTBIPdmNode_var& spIPdmNode)
{
    CATUnicodeString usPartNumber;
    return SUCCEEDED(QTBInfoUtil::GetCatiaPartNumberFromPdm(spIPdmNode, &usPartNumber, FALSE, TRUE))
               ? usPartNumber
               : CATUnicodeString();
}

bool IsPart(const QTBIPdmObjNode_var& spIPdmObjNode)
{
    unsigned char bIsPart = FALSE;
    return SUCCEEDED(QTBPdmGraphUtil::IsPartNode(spIPdmObjNode, &bIsPart, nullptr, nullptr)) && bIsPart != FALSE;
}

QTBCatiaFileClass FileClassOf(const QTBIPdmObjNode_var& spIPdmObjNode)
{
    QTBCatiaFileClass fileClass = QTB_CATIA_FILE_CLASS_UNKNOWN;
    return SUCCEEDED(QTBPdmGraphUtil::IsCatiaFileNode(spIPdmObjNode, nullptr, nullptr, &fileClass))
               ? fileClass
               : QTB_CATIA_FILE_CLASS_UNKNOWN;
}

bool HasStructureOrGeometry(QTBCatiaFileClass fileClass)
{
    return fileClass == QTB_CATIA_FILE_CLASS_CATPRODUCT || fileClass == QTB_CATIA_FILE_CLASS_CATPART ||
           fileClass == QTB_CATIA_FILE_CLASS_CMIARCHIVE;
}

bool UsesInstanceName(const QTBIPdmRelNode_var& spIPdmRelNode, const CATUnicodeString& usInstanceName)
{
    unsigned char bIsUsed = FALSE;
    return SUCCEEDED(QTBInfoUtil::CatiaInstanceNameIsUsedInRelation(spIPdmRelNode, usInstanceName, &bIsUsed)) &&
           bIsUsed != FALSE;
}

// Keeps the best of several candidates: the one of the newest action, then the newest version, then the first.
class BestNode
{
public:
    void Offer(const QTBIPdmNode_var& spIPdmNode)
    {
        int iActionIndex = 0;
        CATUnicodeString usVersion;
        QTBInfoUtil::GetActionIndex(spIPdmNode, &iActionIndex);
        QTBInfoUtil::GetQtbVersion(spIPdmNode, &usVersion);
        if (m_spBest == NULL_var || iActionIndex > m_iActionIndex ||
            (iActionIndex == m_iActionIndex && QTBPdmGraphUtil::IsNewerVersion(usVersion, m_usVersion))) {
            m_spBest = spIPdmNode;
            m_iActionIndex = iActionIndex;
            m_usVersion = usVersion;
        }
    }

    const QTBIPdmNode_var& Get() const { return m_spBest; }
    bool IsEmpty() const { return m_spBest == NULL_var; }

private:
    QTBIPdmNode_var m_spBest;
    int m_iActionIndex = 0;
    CATUnicodeString m_usVersion;
};

// The best of several files; those with structure or geometry of their own come first.
class BestFile
{
public:
    void Offer(const QTBIPdmObjNode_var& spIPdmObjNode)
    {
        const QTBCatiaFileClass fileClass = FileClassOf(spIPdmObjNode);
        if (fileClass != QTB_CATIA_FILE_CLASS_UNKNOWN) {
            (HasStructureOrGeometry(fileClass) ? m_First : m_Second).Offer(spIPdmObjNode);
        }
    }

    const QTBIPdmNode_var& Get() const { return m_First.IsEmpty() ? m_Second.Get() : m_First.Get(); }

private:
    BestNode m_First;
    BestNode m_Second;
};

template <class Handle>
HRESULT GiveFound(const QTBIPdmNode_var& spFound, Handle* pspOut)
{
    if (spFound == NULL_var) {
        return E_FAIL;
    }
    *pspOut = spFound;
    return S_OK;
}

} // namespace

QTBLoadManager::QTBLoadManager()
    : m_pIndex(std::make_unique<QTBPdmNodeIndex>()), m_pProducts(std::make_unique<QTBProductRecords>()),
      m_CatiaAttributes(&QTBHashTableAttribute::Hash, &QTBHashTableAttribute::Compare, FIRST_BUCKET_COUNT)
{
}

QTBLoadManager::~QTBLoadManager() = default;

void QTBLoadManager::Reset()
{
    *m_pIndex = QTBPdmNodeIndex();
    *m_pProducts = QTBProductRecords();
    m_CatiaAttributes.RemoveAll();
    m_ChildInstances.clear();
    m_SupersedingRelations.clear();
    m_LongestSupersededKey = 0;
}

HRESULT QTBLoadManager::GetPdmPartForPartNumber(const CATUnicodeString& usPartNumber, QTBIPdmNode_var* pspIPdmNode)
{
    if (usPartNumber.IsEmpty() || pspIPdmNode == nullptr) {
        return E_FAIL;
    }
    BestNode best;
    for (const CATBaseUnknown_var& spNode : m_pIndex->FindByPartNumber(usPartNumber)) {
        if (IsPart(spNode) && PartNumberOf(spNode) == usPartNumber) {
            best.Offer(spNode);
        }
    }
    return GiveFound(best.Get(), pspIPdmNode);
}

HRESULT QTBLoadManager::GetPdmFileForPartNumber(const CATUnicodeString& usPartNumber, QTBIPdmNode_var* pspIPdmNode)
{
    if (usPartNumber.IsEmpty() || pspIPdmNode == nullptr) {
        return E_FAIL;
    }
    BestFile best;
    for (const CATBaseUnknown_var& spNode : m_pIndex->FindByPartNumber(usPartNumber)) {
        if (PartNumberOf(spNode) == usPartNumber) {
            best.Offer(spNode);
        }
    }
    QTBIPdmNode_var spIPdmNodeOnPart;
    if (best.Get() == NULL_var && SUCCEEDED(GetPdmPartForPartNumber(usPartNumber, &spIPdmNodeOnPart))) {
        for (const CATBaseUnknown_var& spNode : m_pIndex->FindFileRelations(KeyOf(spIPdmNodeOnPart))) {
            const QTBIPdmRelNode_var spIPdmRelNode(spNode);
            QTBIPdmObjNode_var spLeftObject;
            QTBIPdmObjNode_var spRightObject;
            if (spIPdmRelNode != NULL_var && SUCCEEDED(spIPdmRelNode->GetLeftObject(&spLeftObject)) &&
                spLeftObject == spIPdmNodeOnPart && SUCCEEDED(spIPdmRelNode->GetRightObject(&spRightObject))) {
                best.Offer(spRightObject);
            }
        }
    }
    return GiveFound(best.Get(), pspIPdmNode);
}

HRESULT QTBLoadManager::GetPdmFileForPdmObjName(const CATUnicodeString& usObjInfo, QTBIPdmNode_var* pspIPdmNode,
                                                const unsigned char& bReportIfUndefined)
{
    if (usObjInfo.IsEmpty() || pspIPdmNode == nullptr) {
        return E_FAIL;
    }
    BestNode best;
    for (const CATBaseUnknown_var& spNode : m_pIndex->FindFilesByObjInfo(usObjInfo)) {
        if (QTBPdmNodeIndex::GetObjInfo(spNode) == usObjInfo) {
            best.Offer(spNode);
        }
    }
    if (best.IsEmpty() && bReportIfUndefined != FALSE) {
        auto* pError = CATError::Make<CATInternalError>({usObjInfo}, "PdmFileNotFoundERR_1002", "QTBBaseLibErrors");
        return CATError::GetReturn(2, pError, nullptr, __FILE__, __LINE__);
    }
    return GiveFound(best.Get(), pspIPdmNode);
}

HRESULT QTBLoadManager::GetPdmRelationForInstance(const CATUnicodeString& usFatherPartNumber,
                                                  const CATUnicodeString& usInstanceName,
                                                  QTBIPdmRelNode_var* pspIPdmRelNode)
{
    if (usFatherPartNumber.IsEmpty() || usInstanceName.IsEmpty() || pspIPdmRelNode == nullptr) {
        return E_FAIL;
    }
    BestNode best;
    for (const CATBaseUnknown_var& spFather : m_pIndex->FindByPartNumber(usFatherPartNumber)) {
        if (PartNumberOf(spFather) != usFatherPartNumber) {
            continue;
        }
        for (const CATBaseUnknown_var& spNode : m_pIndex->FindRelationsByInstance(KeyOf(spFather), usInstanceName)) {
            const QTBIPdmRelNode_var spIPdmRelNode(spNode);
            QTBIPdmObjNode_var spLeftObject;
            unsigned char bIsPartToPart = FALSE;
            if (spIPdmRelNode != NULL_var && SUCCEEDED(spIPdmRelNode->GetLeftObject(&spLeftObject)) &&
                spLeftObject == spFather && UsesInstanceName(spIPdmRelNode, usInstanceName) &&
                SUCCEEDED(QTBPdmGraphUtil::IsPartToPartRelationNode(spIPdmRelNode, &bIsPartToPart)) &&
                bIsPartToPart != FALSE) {
                best.Offer(spIPdmRelNode);
            }
        }
    }
    return GiveFound(best.Get(), pspIPdmRelNode);
}

HRESULT QTBLoadManager::GetPdmRelationForInstance(const CATUnicodeString& usInstanceKey,
                                                  QTBIPdmRelNode_var* pspIPdmRelNode)
{
    if (usInstanceKey.IsEmpty() || pspIPdmRelNode == nullptr) {
        return E_FAIL;
    }
    HRESULT hr = FindRelationByInstanceKey(usInstanceKey, pspIPdmRelNode);
    // Keys of relations may hold slashes themselves.
    const std::string_view key = usInstanceKey.View();
    for (std::size_t end = key.find('/'); FAILED(hr) && end <= m_LongestSupersededKey; end = key.find('/', end + 1)) {
        CATUnicodeString usRelationKey = CATUnicodeString::FromValidUtf8(key.substr(0, end));
        bool isSuperseded = false;
        for (auto it = m_SupersedingRelations.find(usRelationKey); it != m_SupersedingRelations.end();
             it = m_SupersedingRelations.find(usRelationKey)) {
            usRelationKey = it->second;
            isSuperseded = true;
        }
        if (isSuperseded) {
            hr = FindRelationByInstanceKey(
                MakeInstanceKey(usRelationKey, CATUnicodeString::FromValidUtf8(key.substr(end + 1))), pspIPdmRelNode);
        }
    }
    return hr;
}

HRESULT QTBLoadManager::FindRelationByInstanceKey(const CATUnicodeString& usInstanceKey,
                                                  QTBIPdmRelNode_var* pspIPdmRelNode)
{
    BestNode best;
    for (const CATBaseUnknown_var& spNode : m_pIndex->FindRelationsByInstanceKey(usInstanceKey)) {
        const QTBIPdmRelNode_var spIPdmRelNode(spNode);
        const CATUnicodeString usStart = MakeInstanceKey(KeyOf(spNode), "");
        if (spIPdmRelNode != NULL_var && usInstanceKey.View().substr(0, usStart.GetLengthInByte()) == usStart.View() &&
            UsesInstanceName(spIPdmRelNode,
                             CATUnicodeString::FromValidUtf8(usInstanceKey.View().substr(usStart.GetLengthInByte())))) {
            best.Offer(spIPdmRelNode);
        }
    }
    return GiveFound(best.Get(), pspIPdmRelNode);
}

CATUnicodeString QTBLoadManager::MakeInstanceKey(const CATUnicodeString& usRelationKey,
                                                 const CATUnicodeString& usInstanceName)
{
    return usRelationKey + "/" + usInstanceName;
}

HRESULT QTBLoadManager::GetPdmNodeType(const CATBaseUnknown_var& spProduct, CATUnicodeString* pusPdmNodeType,
                                       const unsigned char& bEmptyIfUndefined)
{
    if (spProduct == NULL_var || pusPdmNodeType == nullptr) {
        return E_FAIL;
    }
    const QTBProductRecord* pRecord = m_pProducts->Find(spProduct);
    const bool isRecorded = pRecord != nullptr && !pRecord->usPdmNodeType.IsEmpty();
    if (!isRecorded && bEmptyIfUndefined == FALSE) {
        return E_FAIL;
    }
    *pusPdmNodeType = isRecorded ? pRecord->usPdmNodeType : CATUnicodeString();
    return S_OK;
}

HRESULT QTBLoadManager::SetPdmNodeType(const CATBaseUnknown_var& spProduct, const CATUnicodeString& usPdmNodeType,
                                       const unsigned char& bOverwrite)
{
    if (spProduct == NULL_var || usPdmNodeType.IsEmpty()) {
        return E_FAIL;
    }
    QTBProductRecord& record = m_pProducts->Make(spProduct);
    if (bOverwrite != FALSE || record.usPdmNodeType.IsEmpty()) {
        record.usPdmNodeType = usPdmNodeType;
    }
    return S_OK;
}

HRESULT QTBLoadManager::GetCatiaFileIsCmiArchiveRoot(const CATBaseUnknown_var& spProduct, unsigned char* pbIsRoot,
                                                     CATUnicodeString* pusArchiveFileName)
{
    if (spProduct == NULL_var || pbIsRoot == nullptr) {
        return E_FAIL;
    }
    const QTBProductRecord* pRecord = m_pProducts->Find(spProduct);
    *pbIsRoot = pRecord != nullptr ? pRecord->bIsArchiveRoot : static_cast<unsigned char>(FALSE);
    if (pusArchiveFileName != nullptr) {
        *pusArchiveFileName = pRecord != nullptr ? pRecord->usArchiveFileName : CATUnicodeString();
    }
    return S_OK;
}

HRESULT QTBLoadManager::SetCatiaFileIsCmiArchiveRoot(const CATBaseUnknown_var& spProduct, const unsigned char& bIsRoot,
                                                     const CATUnicodeString& usArchiveFileName)
{
    if (spProduct == NULL_var) {
        return E_FAIL;
    }
    QTBProductRecord& record = m_pProducts->Make(spProduct);
    record.bIsArchiveRoot = bIsRoot != FALSE ? TRUE : FALSE;
    record.usArchiveFileName = usArchiveFileName;
    return S_OK;
}

HRESULT QTBLoadManager::GetPsnReferenceIsAuxFile(const CATBaseUnknown_var& spProduct, unsigned char* pbIsAuxFile)
{
    const QTBProductRecord* pRecord = m_pProducts->Find(spProduct);
    if (pbIsAuxFile == nullptr || pRecord == nullptr || !pRecord->bIsAuxFile.has_value()) {
        return E_FAIL;
    }
    *pbIsAuxFile = *pRecord->bIsAuxFile;
    return S_OK;
}

HRESULT QTBLoadManager::SetPsnReferenceIsAuxFile(const CATBaseUnknown_var& spProduct, const unsigned char& bIsAuxFile)
{
    if (spProduct == NULL_var) {
        return E_FAIL;
    }
    m_pProducts->Make(spProduct).bIsAuxFile = bIsAuxFile != FALSE ? TRUE : FALSE;
    return S_OK;
}

HRESULT QTBLoadManager::GetChildInstanceInfosAtLoad(const CATUnicodeString& usPartNumber,
                                                    CATListValCATUnicodeString* pInstanceInfos)
{
    const auto saved = m_ChildInstances.find(usPartNumber);
    if (pInstanceInfos == nullptr || saved == m_ChildInstances.end()) {
        return E_FAIL;
    }
    *pInstanceInfos = saved->second;
    return S_OK;
}

HRESULT QTBLoadManager::SetChildInstanceInfosAtLoad(const CATUnicodeString& usPartNumber,
                                                    const CATListValCATUnicodeString& InstanceInfos)
{
    if (usPartNumber.IsEmpty()) {
        return E_FAIL;
    }
    m_ChildInstances[usPartNumber] = InstanceInfos;
    return S_OK;
}

HRESULT QTBLoadManager::ChildInstanceNamesAreProcessed(const CATUnicodeString& usPartNumber,
                                                       unsigned char* pbAreProcessed)
{
    if (pbAreProcessed == nullptr) {
        return E_FAIL;
    }
    *pbAreProcessed = m_ChildInstances.count(usPartNumber) > 0 ? TRUE : FALSE;
    return S_OK;
}

QTBHashTableNvSetAttribute* QTBLoadManager::FindNvSet(const CATUnicodeString& usNodeKey) const
{
    QTBHashTableNvSetAttribute* pNvSet = nullptr;
    QTBHashTableUtil::Find(usNodeKey, &m_CatiaAttributes, &pNvSet, TRUE);
    return pNvSet;
}

HRESULT QTBLoadManager::SetCatiaAttr(const CATUnicodeString& usNodeKey, const CATUnicodeString& usName,
                                     const CATUnicodeString& usValue)
{
    if (usNodeKey.IsEmpty() || usName.IsEmpty()) {
        return E_FAIL;
    }
    QTBHashTableNvSetAttribute* pNvSet = FindNvSet(usNodeKey);
    if (pNvSet == nullptr) {
        auto pNewNvSet = std::make_unique<QTBHashTableNvSetAttribute>(usNodeKey);
        if (const HRESULT hr = QTBHashTableUtil::Insert(pNewNvSet.get(), &m_CatiaAttributes, TRUE, FALSE); FAILED(hr)) {
            return hr;
        }
        pNvSet = pNewNvSet.release();
    }
    return pNvSet->SetNvValue(usName, usValue);
}

HRESULT QTBLoadManager::GetCatiaAttr(const CATUnicodeString& usNodeKey, const CATUnicodeString& usName,
                                     CATUnicodeString* pusValue)
{
    const QTBHashTableNvSetAttribute* pNvSet = FindNvSet(usNodeKey);
    return pNvSet != nullptr && pusValue != nullptr ? pNvSet->GetNvValue(usName, pusValue) : E_FAIL;
}

HRESULT QTBLoadManager::GetCatiaAttributesNvSetPtr(const CATUnicodeString& usNodeKey,
                                                   QTBHashTableNvSetAttribute** ppNvSet)
{
    QTBHashTableNvSetAttribute* pNvSet = FindNvSet(usNodeKey);
    if (ppNvSet == nullptr || pNvSet == nullptr) {
        return E_FAIL;
    }
    *ppNvSet = pNvSet;
    return S_OK;
}

HRESULT QTBLoadManager::ReplacePdmItem(const QTBIPdmNode_var& spIPdmNodeOnNewNode, const CATUnicodeString& usOldKey,
                                       const CATBaseUnknown_var& spProduct)
{
    const CATUnicodeString usNewKey = KeyOf(spIPdmNodeOnNewNode);
    if (usNewKey.IsEmpty() || usOldKey.IsEmpty()) {
        return E_FAIL;
    }
    if (usOldKey != usNewKey) {
        MoveCatiaAttributes(usOldKey, usNewKey);
        QTBIPdmNodeCont_var spIPdmNodeCont;
        QTBIPdmNode_var spIPdmNodeOnOldNode;
        unsigned char bOldNodeExists = FALSE;
        if (SUCCEEDED(QTBGlobVarsUtil::GetGlobalPdmNodeContainer(&spIPdmNodeCont)) &&
            SUCCEEDED(spIPdmNodeCont->GetPdmNodeByKey(usOldKey, &spIPdmNodeOnOldNode, &bOldNodeExists)) &&
            bOldNodeExists != FALSE) {
            MoveChildInstances(spIPdmNodeOnOldNode, spIPdmNodeOnNewNode);
            // The relations of the old object will hang on the new one: they are entered anew on the next look-up.
            const QTBINodeRelations_var spINodeRelationsOnOldNode(spIPdmNodeOnOldNode);
            CATListValCATBaseUnknown_var Relations;
            if (spINodeRelationsOnOldNode != NULL_var &&
                SUCCEEDED(spINodeRelationsOnOldNode->GetAllRightRelations(&Relations, TRUE, ALL_NODES))) {
                for (const CATBaseUnknown_var& spRelation : Relations) {
                    m_pIndex->NodeWasRead(KeyOf(spRelation));
                }
            }
        }
        m_pIndex->NodeWasRead(usNewKey);
        if (QTBIPdmRelNode_var(spIPdmNodeOnNewNode) != NULL_var) {
            NoteSupersededRelation(usOldKey, usNewKey);
        }
    }
    CATUnicodeString usClassName;
    if (spProduct != NULL_var && SUCCEEDED(spIPdmNodeOnNewNode->GetClassName(&usClassName))) {
        return SetPdmNodeType(spProduct, usClassName, TRUE);
    }
    return S_OK;
}

void QTBLoadManager::NoteSupersededRelation(const CATUnicodeString& usOldKey, const CATUnicodeString& usNewKey)
{
    // One that comes back leads nowhere else: there are no circles.
    m_SupersedingRelations.erase(usNewKey);
    m_SupersedingRelations.insert_or_assign(usOldKey, usNewKey);
    m_LongestSupersededKey = std::max(m_LongestSupersededKey, usOldKey.View().size());
}

void QTBLoadManager::MoveCatiaAttributes(const CATUnicodeString& usFromKey, const CATUnicodeString& usToKey)
{
    const QTBHashTableNvSetAttribute* pNvSet = FindNvSet(usFromKey);
    CATListValCATUnicodeString Names;
    CATListValCATUnicodeString Values;
    if (pNvSet == nullptr || FAILED(pNvSet->GetNvSet(&Names, &Values))) {
        return;
    }
    for (int i = 1; i <= Names.Size(); ++i) {
        CATUnicodeString usValue;
        if (FAILED(GetCatiaAttr(usToKey, Names[i], &usValue))) {
            SetCatiaAttr(usToKey, Names[i], Values[i]);
        }
    }
    QTBHashTableUtil::Remove(usFromKey, &m_CatiaAttributes, TRUE, TRUE);
}

void QTBLoadManager::MoveChildInstances(const QTBIPdmNode_var& spFromNode, const QTBIPdmNode_var& spToNode)
{
    const CATUnicodeString usFrom = PartNumberOf(spFromNode);
    const CATUnicodeString usTo = PartNumberOf(spToNode);
    const auto saved = m_ChildInstances.find(usFrom);
    if (saved != m_ChildInstances.end() && !usTo.IsEmpty() && usFrom != usTo) {
        m_ChildInstances.try_emplace(usTo, saved->second);
        m_ChildInstances.erase(usFrom);
    }
}

HRESULT QTBLoadManager::RemovePdmNodeData(const QTBIPdmNode_var& spIPdmNode)
{
    const CATUnicodeString usKey = KeyOf(spIPdmNode);
    if (usKey.IsEmpty()) {
        return E_FAIL;
    }
    if (FindNvSet(usKey) != nullptr) {
        QTBHashTableUtil::Remove(usKey, &m_CatiaAttributes, TRUE, TRUE);
    }
    return S_OK;
}

HRESULT QTBLoadManager::PdmNodeWasRead(const CATUnicodeString& usNodeKey)
{
    if (usNodeKey.IsEmpty()) {
        return E_FAIL;
    }
    m_pIndex->NodeWasRead(usNodeKey);
    return S_OK;
}
