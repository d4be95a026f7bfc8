#pragma once

namespace pugi {
struct xml_node_struct;
} // namespace pugi

class CATDOMStore;

// Connected part of a document: the document itself, or a branch that was removed from it or not yet appended. From any
// node of a branch a caller can reach all of it, so its nodes stay while there is a handle object on one of them and
// are freed with the last.
struct CATDOMBranch
{
    CATDOMStore* pStore;
    // The top element, the document node for the document itself.
    pugi::xml_node_struct* pRoot;
    // The branch that this one was appended to; its handle objects are counted there.
    CATDOMBranch* pMergedInto = nullptr;
    // Handle objects on nodes of the branch.
    int handles = 0;
    // Handle objects and merged branches that point here; the record goes with the last.
    int references = 0;
    // Of the branches to be freed when the bulk release ends.
    CATDOMBranch* pNextUnreachable = nullptr;
};
