#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "CATIDOMDocument.h"
#include "CATXMLDocumentFactory.h"

namespace {

// A document beside a plain model of it. Random operations are made on both, through handles that come and go, and
// every handle has to show what the model holds.
class RandomDocument
{
public:
    explicit RandomDocument(unsigned int seed) : m_Random(seed)
    {
        CATXMLDocumentFactory::CreateDocument("e0", &m_spDocument);
        CATIDOMElement_var spRoot;
        m_spDocument->GetDocumentElement(&spRoot);
        m_Elements[0] = Element{};
        m_Elements[0].spHandle = spRoot;
        m_Root = 0;
    }

    void Step()
    {
        switch (Draw(8)) {
        case 0:
            CreateElement();
            break;
        case 1:
        case 2:
            CreateChild();
            break;
        case 3:
            Append();
            break;
        case 4:
            Remove();
            break;
        case 5:
            Drop();
            break;
        case 6:
            TakeNeighbours();
            break;
        default:
            ReplaceRoot();
            break;
        }
        ForgetUnreachable();
    }

    void Check() const
    {
        CATIDOMElement_var spRoot;
        ASSERT_EQ(m_spDocument->GetDocumentElement(&spRoot), S_OK);
        ASSERT_EQ(NameOf(spRoot), m_Root >= 0 ? ToName(m_Root) : std::string());
        for (const auto& [id, element] : m_Elements) {
            if (element.spHandle == NULL_var) {
                continue;
            }
            ASSERT_EQ(NameOf(element.spHandle), ToName(id));
            CATIDOMNode_var spParent;
            ASSERT_EQ(element.spHandle->GetParentNode(&spParent), S_OK);
            if (id == m_Root) {
                ASSERT_TRUE(spParent == m_spDocument);
            } else {
                ASSERT_EQ(NameOf(spParent), element.parent >= 0 ? ToName(element.parent) : std::string());
            }
            CATIDOMNode_var spChild;
            ASSERT_EQ(element.spHandle->GetFirstChild(&spChild), S_OK);
            for (const int child : element.children) {
                ASSERT_EQ(NameOf(spChild), ToName(child));
                const CATIDOMElement_var& spKnown = m_Elements.at(child).spHandle;
                ASSERT_TRUE(spKnown == NULL_var || spKnown == spChild);
                CATIDOMNode_var spNext;
                ASSERT_EQ(spChild->GetNextSibling(&spNext), S_OK);
                spChild = spNext;
            }
            ASSERT_TRUE(spChild == NULL_var);
        }
    }

private:
    struct Element
    {
        int parent = -1;
        std::vector<int> children;
        CATIDOMElement_var spHandle;
    };

    static std::string ToName(int id) { return "e" + std::to_string(id); }

    static std::string NameOf(const CATIDOMNode_var& spNode)
    {
        CATUnicodeString usName;
        if (spNode != NULL_var) {
            spNode->GetNodeName(&usName);
        }
        return usName.ConvertToChar();
    }

    int Draw(std::size_t count) { return static_cast<int>(m_Random() % count); }

    // An element that there is a handle on, -1 when there is none.
    int DrawHeld()
    {
        std::vector<int> held;
        for (const auto& [id, element] : m_Elements) {
            if (element.spHandle != NULL_var) {
                held.push_back(id);
            }
        }
        return held.empty() ? -1 : held[static_cast<std::size_t>(Draw(held.size()))];
    }

    int TopOf(int id) const
    {
        while (m_Elements.at(id).parent >= 0) {
            id = m_Elements.at(id).parent;
        }
        return id;
    }

    bool IsBelow(int id, int ancestor) const
    {
        while (id >= 0 && id != ancestor) {
            id = m_Elements.at(id).parent;
        }
        return id >= 0;
    }

    void Detach(int id)
    {
        Element& element = m_Elements.at(id);
        if (element.parent >= 0) {
            std::vector<int>& siblings = m_Elements.at(element.parent).children;
            siblings.erase(std::find(siblings.begin(), siblings.end(), id));
        }
        element.parent = -1;
        if (id == m_Root) {
            m_Root = -1;
        }
    }

    void CreateElement()
    {
        CATIDOMElement_var spNew;
        ASSERT_EQ(m_spDocument->CreateElement(ToName(m_NextId).c_str(), &spNew), S_OK);
        m_Elements[m_NextId++].spHandle = spNew;
    }

    void CreateChild()
    {
        const int parent = DrawHeld();
        if (parent < 0) {
            return;
        }
        CATIDOMElement_var spNew;
        ASSERT_EQ(m_Elements.at(parent).spHandle->CreateChildElement(ToName(m_NextId).c_str(), &spNew), S_OK);
        Element& child = m_Elements[m_NextId];
        child.parent = parent;
        if (Draw(3) > 0) {
            child.spHandle = spNew;
        }
        m_Elements.at(parent).children.push_back(m_NextId++);
    }

    void Append()
    {
        const int parent = DrawHeld();
        const int child = DrawHeld();
        if (parent < 0) {
            return;
        }
        const HRESULT hr = m_Elements.at(parent).spHandle->AppendChild(m_Elements.at(child).spHandle);
        if (IsBelow(parent, child)) {
            ASSERT_EQ(hr, E_FAIL);
            return;
        }
        ASSERT_EQ(hr, S_OK);
        Detach(child);
        m_Elements.at(child).parent = parent;
        m_Elements.at(parent).children.push_back(child);
    }

    void Remove()
    {
        const int child = DrawHeld();
        if (child < 0) {
            return;
        }
        CATIDOMNode_var spParent;
        ASSERT_EQ(m_Elements.at(child).spHandle->GetParentNode(&spParent), S_OK);
        if (spParent != NULL_var) {
            ASSERT_EQ(spParent->RemoveChild(m_Elements.at(child).spHandle), S_OK);
            Detach(child);
        }
    }

    void Drop()
    {
        if (const int id = DrawHeld(); id >= 0) {
            m_Elements.at(id).spHandle = NULL_var;
        }
    }

    void TakeNeighbours()
    {
        const int id = DrawHeld();
        if (id < 0) {
            return;
        }
        Element& element = m_Elements.at(id);
        CATIDOMNode_var spNode;
        if (element.parent >= 0) {
            element.spHandle->GetParentNode(&spNode);
            m_Elements.at(element.parent).spHandle = spNode;
        }
        if (!element.children.empty()) {
            element.spHandle->GetFirstChild(&spNode);
            m_Elements.at(element.children.front()).spHandle = spNode;
        }
    }

    void ReplaceRoot()
    {
        const int id = DrawHeld();
        if (id < 0 || Draw(4) > 0) {
            return;
        }
        const HRESULT hr = m_spDocument->AppendChild(m_Elements.at(id).spHandle);
        if (m_Root >= 0) {
            ASSERT_EQ(hr, id == m_Root ? S_OK : E_FAIL);
            return;
        }
        ASSERT_EQ(hr, S_OK);
        Detach(id);
        m_Root = id;
    }

    // What hangs neither in the document nor on a handle is gone.
    void ForgetUnreachable()
    {
        std::map<int, bool> isReachable;
        for (const auto& [id, element] : m_Elements) {
            const int top = TopOf(id);
            isReachable[top] = isReachable[top] || top == m_Root || element.spHandle != NULL_var;
        }
        std::vector<int> gone;
        for (const auto& [id, element] : m_Elements) {
            if (!isReachable[TopOf(id)]) {
                gone.push_back(id);
            }
        }
        for (const int id : gone) {
            m_Elements.erase(id);
        }
    }

    std::mt19937 m_Random;
    CATIDOMDocument_var m_spDocument;
    std::map<int, Element> m_Elements;
    int m_Root = -1;
    int m_NextId = 1;
};

class DomStore : public testing::TestWithParam<unsigned int>
{
};

TEST_P(DomStore, ShowsTheSameTreeAfterAnySequenceOfOperations)
{
    const int before = CATXMLDocumentFactory::GetLiveDocumentCount();
    {
        RandomDocument document(GetParam());
        for (int step = 0; step < 800 && !testing::Test::HasFatalFailure(); ++step) {
            document.Step();
            document.Check();
        }
    }
    EXPECT_EQ(CATXMLDocumentFactory::GetLiveDocumentCount(), before);
}

INSTANTIATE_TEST_SUITE_P(Seeds, DomStore, testing::Range(1U, 13U));

} // namespace
