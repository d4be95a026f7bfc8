#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "CATListValCATBaseUnknown_var.h"
#include "QTBNodeKeyIndex.h"

class CATIDOMElement;
class CATUnicodeString;
using CATIDOMElement_var = CATInterface_var<CATIDOMElement>;

// Base of the node containers: a store of nodes by their key and the XML document under which their elements hang.
//
// The visible store is 256 buckets, chosen by the lowest byte of a node's hash key, each in order of filing. An index
// over it makes look-up and removal independent of the number of nodes. A node is in at most one bucket, and its key
// must not change while it is filed.
class QTBNodeContainer : public CATBaseUnknown
{
public:
    QTBNodeContainer();
    ~QTBNodeContainer() override;

    // The node filed under the key; *pbNodeFound FALSE with S_OK when there is none. Fails for null pointers and for a
    // filed component that is no node.
    virtual HRESULT GetNodeByKey(const CATUnicodeString& usKey, CATBaseUnknown_var* pspBaseUnknownOnNode,
                                 unsigned char* pbNodeFound);

    // Dissolves the node's relations, or moves them to another node when one is given, detaches its XML element and
    // takes it out of the store. A node that is not filed here only loses its relations.
    virtual HRESULT RemoveNodeFromContainer(CATBaseUnknown_var* pspBaseUnknownOnNode,
                                            CATBaseUnknown_var* pspBaseUnknownOnNodeToTransferRelationsTo);
    // The same by key, without transfer; E_FAIL without error for an unknown key.
    virtual HRESULT RemoveNodeFromContainer(const CATUnicodeString& usKey);

    virtual HRESULT PrintNodeRelations();
    virtual unsigned char NodeExists(const CATUnicodeString& usKey);

    // The document element of the container's own XML document, named "root"; the same one on every call.
    virtual HRESULT GetXmlDocumentRootElement(CATIDOMElement_var* pspIDOMElement);

protected:
    static constexpr int BUCKET_COUNT = 256;

    // Files a node whose key is set. Whether another node has the same key is not looked at.
    void FileNode(const CATBaseUnknown_var& spBaseUnknownOnNode);

    // Takes the element at that position out of a bucket, and nothing else.
    void RemoveBucketPosition(int bucket, int position);

    std::array<CATListValCATBaseUnknown_var, BUCKET_COUNT> m_NodeBuckets;

private:
    HRESULT GetNodeByWalk(const CATUnicodeString& usKey, unsigned int hashKey, CATBaseUnknown_var* pspBaseUnknownOnNode,
                          unsigned char* pbNodeFound);
    // Where a node is filed that has that hash; position 0 when it is not.
    struct Place
    {
        int bucket;
        int position;
    };
    Place FindPosition(const CATBaseUnknown_var& spBaseUnknownOnNode, unsigned int hashKey) const;

    CATIDOMElement_var m_spIDOMElementOnXmlDocumentRoot;
    // Numbers of the elements of each bucket, parallel to it and ascending.
    std::array<std::vector<std::uint64_t>, BUCKET_COUNT> m_BucketNumbers;
    QTBNodeKeyIndex m_Index;
    std::uint64_t m_LastNumber = 0;
    // Elements that could not be indexed because they do not answer as nodes do.
    int m_ElementsWithoutIndex = 0;
};
