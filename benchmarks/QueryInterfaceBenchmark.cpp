// A repeated query of an interface with its release, beside a dynamic_cast over three levels of inheritance.

#include <memory>
#include <vector>

#include <benchmark/benchmark.h>

#include "BenchmarkSession.h"
#include "QTBINode.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmObjNode.h"

namespace {

void QueryInterface(benchmark::State& state)
{
    BenchmarkSession session;
    CATBaseUnknown_var spNode = session.CreateObject("K1");
    // The interfaces of daily work are there; the last one is asked for.
    const QTBINodeAttributes_var spINodeAttributes(spNode);
    const QTBINodeRelations_var spINodeRelations(spNode);
    const QTBIPdmNode_var spIPdmNode(spNode);
    const QTBIPdmObjNode_var spIPdmObjNode(spNode);
    CATBaseUnknown* pNode = spNode.Get();
    for (auto _ : state) {
        void* pInterface = nullptr;
        pNode->QueryInterface(IID_QTBIPdmObjNode, &pInterface);
        benchmark::DoNotOptimize(pInterface);
        static_cast<CATBaseUnknown*>(pInterface)->Release();
    }
}
BENCHMARK(QueryInterface)->Name("Measured/QueryInterface with Release");

struct Root
{
    virtual ~Root() = default;
};
struct Middle : Root
{
};
struct Lower : Middle
{
};
struct Leaf : Lower
{
};

void DynamicCast(benchmark::State& state)
{
    const std::unique_ptr<Root> pRoot = std::make_unique<Leaf>();
    Root* pObject = pRoot.get();
    for (auto _ : state) {
        benchmark::DoNotOptimize(pObject);
        auto* pCast = dynamic_cast<Lower*>(pObject);
        benchmark::DoNotOptimize(pCast);
    }
}
BENCHMARK(DynamicCast)->Name("Floor/QueryInterface with Release");

} // namespace
