#pragma once

#include "BenchmarkSession.h"

class CATFrmWindow;

// A PDM window on the tree of AnswerGenerator::Tree; it closes with the object.
class RepTree
{
public:
    RepTree();
    RepTree(const RepTree&) = delete;
    RepTree& operator=(const RepTree&) = delete;
    ~RepTree();

    // Shows everything below the tree's first part; one rep node for each part and for each relation.
    void Expand(const BenchmarkSession& session) const;
    // Ends the program when the tree does not show that many parts; nothing else would be measured.
    void Require(int partCount) const;

    const QTBIRepNodeCont_var& GetCont() const { return m_spIRepNodeCont; }
    QTBIRepNode_var GetRoot() const;

private:
    CATFrmWindow* m_pFrmWindow = nullptr;
    QTBIRepNodeCont_var m_spIRepNodeCont;
};
