#include "QTBChildRepNodeInfo.h"

#include "QTBCheck.h"
#include "QTBGlobVarsUtil.h"
#include "QTBIRepNode.h"

namespace {

// A child of the current action or of the one before it counts as recent.
constexpr int RECENT_ACTIONS = 2;

} // namespace

QTBChildRepNodeInfo::QTBChildRepNodeInfo() = default;

QTBChildRepNodeInfo::QTBChildRepNodeInfo(const QTBNodeRelationInfo& NodeRelationInfo)
    : m_NodeRelationInfo(NodeRelationInfo)
{
}

QTBChildRepNodeInfo::QTBChildRepNodeInfo(const QTBChildRepNodeInfo& other) = default;
QTBChildRepNodeInfo& QTBChildRepNodeInfo::operator=(const QTBChildRepNodeInfo& other) = default;
QTBChildRepNodeInfo::~QTBChildRepNodeInfo() = default;

HRESULT QTBChildRepNodeInfo::SetNodeRelationInfo(const QTBNodeRelationInfo& NodeRelationInfo)
{
    QTB_SCOPE("QTBChildRepNodeInfo::SetNodeRelationInfo");
    m_NodeRelationInfo = NodeRelationInfo;
    return QTB_SUCCESS;
}

HRESULT QTBChildRepNodeInfo::AppendChildRepNode(const QTBIRepNode_var& spIRepNode)
{
    QTB_SCOPE("QTBChildRepNodeInfo::AppendChildRepNode");
    m_ChildRepNodes.Append(spIRepNode);
    return QTB_SUCCESS;
}

unsigned char QTBChildRepNodeInfo::HasChildRepNodes() const
{
    return m_ChildRepNodes.Size() > 0 ? TRUE : FALSE;
}

HRESULT QTBChildRepNodeInfo::GetChildRepNodes(CATListValCATBaseUnknown_var* pChildNodes) const
{
    QTB_SCOPE("QTBChildRepNodeInfo::GetChildRepNodes");
    QTB_ASSERT(pChildNodes != NULL);
    *pChildNodes = m_ChildRepNodes;
    return QTB_SUCCESS;
}

HRESULT QTBChildRepNodeInfo::GetChildRepNodes(CATListValCATBaseUnknown_var* pMostRecentlyUpdatedChildNodes,
                                              CATListValCATBaseUnknown_var* pOlderChildNodes) const
{
    QTB_SCOPE("QTBChildRepNodeInfo::GetChildRepNodes");
    QTB_ASSERT(pMostRecentlyUpdatedChildNodes != NULL);
    QTB_ASSERT(pOlderChildNodes != NULL);
    pMostRecentlyUpdatedChildNodes->RemoveAll();
    pOlderChildNodes->RemoveAll();
    for (const CATBaseUnknown_var& spChildNode : m_ChildRepNodes) {
        const QTBIRepNode_var spIRepNodeOnChildNode(spChildNode);
        QTB_INTERFACE(spIRepNodeOnChildNode);
        int actionIndex = 0;
        QTB_CALL(spIRepNodeOnChildNode->GetPdmNodeActionIndex, &actionIndex);
        int currentActionIndex = 0;
        QTB_CALL(QTBGlobVarsUtil::GetCurrentActionIndex, &currentActionIndex);
        // In a wider type: a record may bring any index.
        const bool isRecent = static_cast<long long>(currentActionIndex) - actionIndex < RECENT_ACTIONS;
        (isRecent ? pMostRecentlyUpdatedChildNodes : pOlderChildNodes)->Append(spChildNode);
    }
    return QTB_SUCCESS;
}

int QTBChildRepNodeInfo::operator==(const QTBChildRepNodeInfo& other) const
{
    return m_NodeRelationInfo == other.m_NodeRelationInfo && m_ChildRepNodes == other.m_ChildRepNodes ? 1 : 0;
}

int QTBChildRepNodeInfo::operator!=(const QTBChildRepNodeInfo& other) const
{
    return *this == other ? 0 : 1;
}
