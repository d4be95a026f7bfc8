#include "QTBNodeContainer.h"

#include <algorithm>

#include "CATIDOMDocument.h"
#include "QTBCheck.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBStringHash.h"
#include "QTBTraceUtil.h"
#include "QTBXmlUtil.h"

namespace {

int BucketOf(unsigned int hashKey)
{
    return static_cast<int>(hashKey & 0xFFU);
}

std::size_t AsOffset(int number)
{
    return static_cast<std::size_t>(number);
}

} // namespace

QTBNodeContainer::QTBNodeContainer()
{
    CATIDOMElement_var spIDOMElement;
    if (FAILED(QTBNodeContainer::GetXmlDocumentRootElement(&spIDOMElement))) {
        QTB_TRACE("GetXmlDocumentRootElement FAILED");
    }
}

QTBNodeContainer::~QTBNodeContainer() = default;

HRESULT QTBNodeContainer::GetNodeByKey(const CATUnicodeString& usKey, CATBaseUnknown_var* pspBaseUnknownOnNode,
                                       unsigned char* pbNodeFound)
{
    QTB_SCOPE("QTBNodeContainer::GetNodeByKey");
    QTB_ASSERT(pspBaseUnknownOnNode != NULL);
    QTB_ASSERT(pbNodeFound != NULL);
    *pbNodeFound = FALSE;
    unsigned int hashKey = 0;
    hashKey %= usKey;
    if (m_ElementsWithoutIndex > 0) [[unlikely]] {
        return GetNodeByWalk(usKey, hashKey, pspBaseUnknownOnNode, pbNodeFound);
    }
    if (const QTBNodeKeyIndex::Entry* pEntry = m_Index.Find(usKey, hashKey)) {
        *pspBaseUnknownOnNode = pEntry->pNode;
        *pbNodeFound = TRUE;
    }
    return QTB_SUCCESS;
}

// With an element that the index does not know, its bucket is looked through in order, so that the element fails the
// look-ups that come by it.
HRESULT QTBNodeContainer::GetNodeByWalk(const CATUnicodeString& usKey, unsigned int hashKey,
                                        CATBaseUnknown_var* pspBaseUnknownOnNode, unsigned char* pbNodeFound)
{
    const CATListValCATBaseUnknown_var& Bucket = m_NodeBuckets[AsOffset(BucketOf(hashKey))];
    for (int i = 1; i <= Bucket.Size(); ++i) {
        const QTBINodeAttributes_var spINodeAttributesOnCurrentNode(Bucket[i]);
        QTB_INTERFACE(spINodeAttributesOnCurrentNode);
        if (*spINodeAttributesOnCurrentNode->GetHashKey() != hashKey) {
            continue;
        }
        CATUnicodeString usCurrentKey;
        QTB_CALL(spINodeAttributesOnCurrentNode->GetKey, &usCurrentKey);
        if (usCurrentKey == usKey) {
            *pspBaseUnknownOnNode = Bucket[i];
            *pbNodeFound = TRUE;
            break;
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBNodeContainer::RemoveNodeFromContainer(const CATUnicodeString& usKey)
{
    QTB_SCOPE("QTBNodeContainer::RemoveNodeFromContainer");
    CATBaseUnknown_var spBaseUnknownOnNode;
    unsigned char bNodeFound = FALSE;
    QTB_CALL(GetNodeByKey, usKey, &spBaseUnknownOnNode, &bNodeFound);
    if (bNodeFound == FALSE) {
        return E_FAIL;
    }
    QTB_CALL(RemoveNodeFromContainer, &spBaseUnknownOnNode, NULL);
    return QTB_SUCCESS;
}

HRESULT QTBNodeContainer::RemoveNodeFromContainer(CATBaseUnknown_var* pspBaseUnknownOnNode,
                                                  CATBaseUnknown_var* pspBaseUnknownOnNodeToTransferRelationsTo)
{
    QTB_SCOPE("QTBNodeContainer::RemoveNodeFromContainer");
    QTB_ASSERT(pspBaseUnknownOnNode != NULL);
    QTB_INTERFACE(*pspBaseUnknownOnNode);
    const QTBINodeRelations_var spINodeRelationsOnNode(*pspBaseUnknownOnNode);
    QTB_INTERFACE(spINodeRelationsOnNode);

    if (pspBaseUnknownOnNodeToTransferRelationsTo == NULL) {
        QTB_RESULT_AS("QTBINodeRelations::RemoveAllRels", spINodeRelationsOnNode->RemoveAllRels(NULL));
    } else {
        QTB_INTERFACE(*pspBaseUnknownOnNodeToTransferRelationsTo);
        QTBINodeRelations_var spINodeRelationsOnNodeToTransferRelationsTo(*pspBaseUnknownOnNodeToTransferRelationsTo);
        QTB_INTERFACE(spINodeRelationsOnNodeToTransferRelationsTo);
        QTB_RESULT_AS("QTBINodeRelations::RemoveAllRels",
                      spINodeRelationsOnNode->RemoveAllRels(&spINodeRelationsOnNodeToTransferRelationsTo));
    }

    const QTBINodeAttributes_var spINodeAttributesOnNode(*pspBaseUnknownOnNode);
    QTB_INTERFACE(spINodeAttributesOnNode);
    const unsigned int hashKey = *spINodeAttributesOnNode->GetHashKey();
    const auto [bucket, position] = FindPosition(*pspBaseUnknownOnNode, hashKey);
    if (position == 0) {
        return QTB_SUCCESS;
    }

    CATBaseUnknown_var spBaseUnknownOnXmlElement;
    QTB_CALL(spINodeAttributesOnNode->GetXmlElement, &spBaseUnknownOnXmlElement);
    if (spBaseUnknownOnXmlElement != NULL_var) {
        const CATIDOMNode_var spIDOMNode(spBaseUnknownOnXmlElement);
        QTB_INTERFACE(spIDOMNode);
        CATIDOMNode_var spIDOMNodeOnParent;
        QTB_CALL(spIDOMNode->GetParentNode, &spIDOMNodeOnParent);
        if (spIDOMNodeOnParent != NULL_var) {
            QTB_CALL(spIDOMNodeOnParent->RemoveChild, spIDOMNode);
        }
    }
    RemoveBucketPosition(bucket, position);
    return QTB_SUCCESS;
}

HRESULT QTBNodeContainer::PrintNodeRelations()
{
    QTB_SCOPE("QTBNodeContainer::PrintNodeRelations");
    for (const CATListValCATBaseUnknown_var& Bucket : m_NodeBuckets) {
        for (const CATBaseUnknown_var& spBaseUnknownOnNode : Bucket) {
            QTB_INTERFACE(spBaseUnknownOnNode);
            QTB_CALL(QTBTraceUtil::PrintQtbRelations, spBaseUnknownOnNode);
        }
    }
    return QTB_SUCCESS;
}

unsigned char QTBNodeContainer::NodeExists(const CATUnicodeString& usKey)
{
    QTB_SCOPE("QTBNodeContainer::NodeExists");
    unsigned char bNodeFound = FALSE;
    try {
        CATBaseUnknown_var spBaseUnknownOnNode;
        QTB_RAISE_CALL(GetNodeByKey, usKey, &spBaseUnknownOnNode, &bNodeFound);
    } catch (const CATXHException& exception) {
        QTB_TRACE(exception.GetError()->GetNLSMessage());
        return FALSE;
    }
    return bNodeFound;
}

HRESULT QTBNodeContainer::GetXmlDocumentRootElement(CATIDOMElement_var* pspIDOMElement)
{
    QTB_SCOPE("QTBNodeContainer::GetXmlDocumentRootElement");
    if (m_spIDOMElementOnXmlDocumentRoot == NULL_var) {
        CATIDOMDocument_var spIDOMDocumentOnDefaultXmlDoc;
        QTB_CALL(QTBXmlUtil::CreateEmptyDOMDocument, "root", &spIDOMDocumentOnDefaultXmlDoc);
        QTB_CALL(spIDOMDocumentOnDefaultXmlDoc->GetDocumentElement, &m_spIDOMElementOnXmlDocumentRoot);
        QTB_INTERFACE(m_spIDOMElementOnXmlDocumentRoot);
    }
    *pspIDOMElement = m_spIDOMElementOnXmlDocumentRoot;
    return QTB_SUCCESS;
}

void QTBNodeContainer::FileNode(const CATBaseUnknown_var& spBaseUnknownOnNode)
{
    QTBNodeKeyIndex::Entry entry;
    entry.pNode = spBaseUnknownOnNode.Get();
    entry.number = ++m_LastNumber;
    const QTBINodeAttributes_var spINodeAttributes(spBaseUnknownOnNode);
    if (spINodeAttributes != NULL_var) {
        entry.hashKey = *spINodeAttributes->GetHashKey();
    }
    const bool isIndexed = spINodeAttributes != NULL_var && SUCCEEDED(spINodeAttributes->GetKey(&entry.usKey));
    // The three stores hold it all, or when memory runs out none of them.
    CATListValCATBaseUnknown_var& Bucket = m_NodeBuckets[AsOffset(BucketOf(entry.hashKey))];
    std::vector<std::uint64_t>& Numbers = m_BucketNumbers[AsOffset(BucketOf(entry.hashKey))];
    if (isIndexed) {
        m_Index.MakeRoom();
    }
    Numbers.push_back(entry.number);
    try {
        Bucket.Append(spBaseUnknownOnNode);
    } catch (...) {
        Numbers.pop_back();
        throw;
    }
    if (isIndexed) {
        m_Index.Insert(entry);
    } else {
        ++m_ElementsWithoutIndex;
    }
}

QTBNodeContainer::Place QTBNodeContainer::FindPosition(const CATBaseUnknown_var& spBaseUnknownOnNode,
                                                       unsigned int hashKey) const
{
    const int bucket = BucketOf(hashKey);
    const QTBNodeKeyIndex::Entry* pEntry = m_Index.FindNode(spBaseUnknownOnNode.Get(), hashKey);
    if (pEntry != NULL) {
        const std::vector<std::uint64_t>& Numbers = m_BucketNumbers[AsOffset(bucket)];
        const auto number = std::lower_bound(Numbers.begin(), Numbers.end(), pEntry->number);
        return {bucket, static_cast<int>(number - Numbers.begin()) + 1};
    }
    if (m_ElementsWithoutIndex > 0) {
        // One that did not tell its hash when it was filed is in the first bucket.
        for (const int candidate : {bucket, 0}) {
            if (const int position = m_NodeBuckets[AsOffset(candidate)].Locate(spBaseUnknownOnNode); position > 0) {
                return {candidate, position};
            }
        }
    }
    return {bucket, 0};
}

void QTBNodeContainer::RemoveBucketPosition(int bucket, int position)
{
    CATListValCATBaseUnknown_var& Bucket = m_NodeBuckets[AsOffset(bucket)];
    std::vector<std::uint64_t>& Numbers = m_BucketNumbers[AsOffset(bucket)];
    // The entry is found by the node's hash as it was filed; an element without entry was never indexed. A node that
    // has another hash by now must not leave its entry behind, which would outlive it.
    const CATBaseUnknown_var spBaseUnknownOnNode = Bucket[position];
    const QTBINodeAttributes_var spINodeAttributes(spBaseUnknownOnNode);
    const QTBNodeKeyIndex::Entry* pEntry = NULL;
    if (spINodeAttributes != NULL_var) {
        pEntry = m_Index.FindNode(spBaseUnknownOnNode.Get(), *spINodeAttributes->GetHashKey());
    }
    if (pEntry == NULL) {
        pEntry = m_Index.FindNode(spBaseUnknownOnNode.Get());
    }
    // While a reader shares the list, writing to it takes memory.
    Bucket.RemovePosition(position);
    if (pEntry != NULL) {
        m_Index.Remove(pEntry);
    } else {
        --m_ElementsWithoutIndex;
    }
    Numbers.erase(Numbers.begin() + (position - 1));
}
