#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

// The floor of the benchmarks of trees: for each part and relation of AnswerGenerator::Tree a struct with its key,
// filed by key, linked to parent and children.
class PlainTree
{
public:
    PlainTree(int partCount, int childCount);

    // Visits every node from the root on; the number of bytes of all keys.
    std::size_t Walk() const;
    std::size_t GetSize() const { return m_Nodes.size(); }

private:
    struct Node
    {
        std::string key;
        int part;
        Node* pParent;
        std::vector<Node*> children;
    };

    Node* Create(int part, Node* pParent);

    std::unordered_map<std::string, std::unique_ptr<Node>> m_Nodes;
    Node* m_pRoot;
};
