// Expansion of a window's tree, all levels at once: rep nodes created and linked, beside a tree of plain structs with
// keys that holds the same nodes.

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include <benchmark/benchmark.h>

#include "AnswerGenerator.h"
#include "BenchmarkSession.h"
#include "CATInstantiateComponent.h"
#include "QTBConstants.h"
#include "QTBIPdmNode.h"
#include "QTBIRepNode.h"
#include "QTBIRepNodeCont.h"
#include "QTBNodeRelationInfo.h"

namespace {

constexpr int CHILDREN = 10;

void Sizes(benchmark::internal::Benchmark* pBenchmark)
{
    // Parts; each but the root gives two rep nodes, its relation's and its own.
    pBenchmark->Arg(1000)->Arg(10000)->Arg(100000)->Arg(500000)->Unit(benchmark::kMillisecond);
}

void ReportPerNode(benchmark::State& state)
{
    state.counters["per_rep_node"] =
        benchmark::Counter(2.0 * static_cast<double>(state.range(0)) - 1,
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// The rep node container of a window; it leaves the registry with the object.
class RepTree
{
public:
    RepTree()
    {
        CATBaseUnknown* pBaseUnknown = nullptr;
        CATInstantiateComponent("QTBRepNodeCont", CLSID_CATBaseUnknown, reinterpret_cast<void**>(&pBaseUnknown));
        m_spIRepNodeCont = CATBaseUnknown_var::Adopt(pBaseUnknown);
    }
    RepTree(const RepTree&) = delete;
    RepTree& operator=(const RepTree&) = delete;
    ~RepTree() { m_spIRepNodeCont->Cleanup(); }

    const QTBIRepNodeCont_var& Get() const { return m_spIRepNodeCont; }

private:
    QTBIRepNodeCont_var m_spIRepNodeCont;
};

void ExpandRepTree(benchmark::State& state)
{
    const BenchmarkSession session;
    session.Update(AnswerGenerator::Tree(static_cast<int>(state.range(0)), CHILDREN));
    QTBIPdmNode_var spIPdmNodeOnRoot;
    unsigned char bFound = FALSE;
    session.GetPdmNodeCont()->GetPdmNodeByKey(AnswerGenerator::Key(0).c_str(), &spIPdmNodeOnRoot, &bFound);
    CATListValQTBNodeRelationInfo relations;
    relations.Append(QTBNodeRelationInfo("PartPart", usLEFT_TO_RIGHT));
    NodesToRetrieve allNodes = ALL_NODES;
    unsigned char bTrue = TRUE;
    unsigned char bFalse = FALSE;

    for (auto _ : state) {
        state.PauseTiming();
        auto pTree = std::make_unique<RepTree>();
        pTree->Get()->SetPdmNodesToConsider(&allNodes);
        state.ResumeTiming();
        pTree->Get()->UpdateRepTrees(spIPdmNodeOnRoot, relations, &bFalse, nullptr, nullptr, &bTrue);
        state.PauseTiming();
        CATListValCATBaseUnknown_var nodes;
        pTree->Get()->GetAllRepNodes(&nodes);
        if (nodes.Size() != 2 * state.range(0) - 1) {
            state.SkipWithError("the tree is not complete");
        }
        nodes.RemoveAll();
        pTree.reset();
        state.ResumeTiming();
    }
    ReportPerNode(state);
}
BENCHMARK(ExpandRepTree)->Name("Measured/Expansion")->Apply(Sizes);

// The floor: for each part and relation a struct with its key, filed by key, linked to parent and children.
struct PlainNode
{
    std::string key;
    int pdmNode;
    PlainNode* pParent;
    std::vector<PlainNode*> children;
};

void ExpandPlainTree(benchmark::State& state)
{
    const int partCount = static_cast<int>(state.range(0));
    std::vector<std::vector<int>> childrenOf(static_cast<std::size_t>(partCount));
    for (int part = 1; part < partCount; ++part) {
        childrenOf[static_cast<std::size_t>((part - 1) / CHILDREN)].push_back(part);
    }
    for (auto _ : state) {
        std::unordered_map<std::string, std::unique_ptr<PlainNode>> nodes;
        int counter = 0;
        const auto create = [&](int part, PlainNode* pParent) {
            auto pNode = std::make_unique<PlainNode>();
            pNode->key = AnswerGenerator::Key(part) + "-Rep-" + std::to_string(++counter);
            pNode->pdmNode = part;
            pNode->pParent = pParent;
            PlainNode* pCreated = pNode.get();
            if (pParent != nullptr) {
                pParent->children.push_back(pCreated);
            }
            nodes.emplace(pCreated->key, std::move(pNode));
            return pCreated;
        };
        std::vector<PlainNode*> waiting = {create(0, nullptr)};
        while (!waiting.empty()) {
            PlainNode* pParent = waiting.back();
            waiting.pop_back();
            for (const int part : childrenOf[static_cast<std::size_t>(pParent->pdmNode)]) {
                waiting.push_back(create(part, create(part, pParent)));
            }
        }
        benchmark::DoNotOptimize(nodes.size());
        state.PauseTiming();
        nodes.clear();
        state.ResumeTiming();
    }
    ReportPerNode(state);
}
BENCHMARK(ExpandPlainTree)->Name("Floor/Expansion")->Apply(Sizes);

} // namespace
