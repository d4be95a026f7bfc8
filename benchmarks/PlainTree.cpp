#include "PlainTree.h"

#include "AnswerGenerator.h"

PlainTree::PlainTree(int partCount, int childCount)
{
    std::vector<std::vector<int>> childrenOf(static_cast<std::size_t>(partCount));
    for (int part = 1; part < partCount; ++part) {
        childrenOf[static_cast<std::size_t>((part - 1) / childCount)].push_back(part);
    }
    m_pRoot = Create(0, nullptr);
    std::vector<Node*> waiting = {m_pRoot};
    while (!waiting.empty()) {
        Node* pParent = waiting.back();
        waiting.pop_back();
        for (const int part : childrenOf[static_cast<std::size_t>(pParent->part)]) {
            waiting.push_back(Create(part, Create(part, pParent)));
        }
    }
}

std::size_t PlainTree::Walk() const
{
    std::size_t bytes = 0;
    std::vector<const Node*> waiting = {m_pRoot};
    while (!waiting.empty()) {
        const Node* pNode = waiting.back();
        waiting.pop_back();
        bytes += pNode->key.size();
        waiting.insert(waiting.end(), pNode->children.begin(), pNode->children.end());
    }
    return bytes;
}

PlainTree::Node* PlainTree::Create(int part, Node* pParent)
{
    auto pNode = std::make_unique<Node>();
    pNode->key = AnswerGenerator::Key(part) + "-Rep-" + std::to_string(m_Nodes.size() + 1);
    pNode->part = part;
    pNode->pParent = pParent;
    Node* pCreated = pNode.get();
    if (pParent != nullptr) {
        pParent->children.push_back(pCreated);
    }
    m_Nodes.emplace(pCreated->key, std::move(pNode));
    return pCreated;
}
