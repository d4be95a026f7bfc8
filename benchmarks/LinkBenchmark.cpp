// The link between an assembly and its PDM data, both ways: each product asked for its counterparts, each displayed
// relation asked for its products. The time for one instance must not grow with the assembly.

#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "AnswerGenerator.h"
#include "BenchmarkSession.h"
#include "CATDocument.h"
#include "CATDocumentServices.h"
#include "CATIProduct.h"
#include "CATPrdStructure.h"
#include "CATProductServices.h"
#include "QTBILinkToQtb.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"

namespace {

constexpr int CHILDREN = 10;

void Sizes(benchmark::internal::Benchmark* pBenchmark)
{
    // Instances.
    pBenchmark->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}

// The assembly that AnswerGenerator::Tree describes as PDM data.
CATPrdStructure MakeStructure(int partCount)
{
    CATPrdStructure structure;
    for (int part = 0; part < partCount; ++part) {
        CATPrdReferenceData reference;
        const bool isParent = part * CHILDREN + 1 < partCount;
        reference.documentType = isParent ? "CATProduct" : "CATPart";
        reference.storageName =
            ("/benchmark/" + AnswerGenerator::Key(part) + (isParent ? ".CATProduct" : ".CATPart")).c_str();
        reference.definition.partNumber = AnswerGenerator::PartNumber(part).c_str();
        structure.references.push_back(reference);
        if (part > 0) {
            CATPrdUsageData usage;
            usage.parent = static_cast<std::size_t>((part - 1) / CHILDREN);
            usage.child = static_cast<std::size_t>(part);
            usage.instanceName = AnswerGenerator::InstanceName(part).c_str();
            structure.usages.push_back(usage);
        }
    }
    return structure;
}

std::vector<CATIProduct_var> CollectProducts(const CATListValCATBaseUnknown_var& documents)
{
    std::vector<CATIProduct_var> products;
    for (const CATBaseUnknown_var& spDocument : documents) {
        CATIProduct_var spIProduct;
        CATProductServices::GetRootProduct(*CATDocument::FromComponent(spDocument.Get()), &spIProduct);
        products.push_back(spIProduct);
    }
    for (std::size_t i = 0; i < products.size(); ++i) {
        const std::unique_ptr<CATListValCATBaseUnknown_var> pChildren(products[i]->GetChildren("CATIProduct"));
        for (const CATBaseUnknown_var& spChild : *pChildren) {
            products.emplace_back(spChild);
        }
    }
    return products;
}

void LinkProducts(benchmark::State& state)
{
    const int partCount = static_cast<int>(state.range(0)) + 1;
    const BenchmarkSession session;
    session.Update(AnswerGenerator::Tree(partCount, CHILDREN));
    CATListValCATBaseUnknown_var documents;
    CATProductServices::Open(MakeStructure(partCount), &documents);
    std::vector<CATIProduct_var> products = CollectProducts(documents);

    for (auto _ : state) {
        int linked = 0;
        for (const CATIProduct_var& spIProduct : products) {
            unsigned char bExist = FALSE;
            QTBIPdmRelNode_var spIPdmRelNode;
            QTBIPdmObjNode_var spIPdmObjNode;
            QTBILinkToQtb_var(spIProduct)->CorrespondingPdmNodesExist(&bExist, &spIPdmRelNode, &spIPdmObjNode, nullptr);
            linked += bExist != FALSE ? 1 : 0;
        }
        if (linked != partCount) {
            state.SkipWithError("not every product is linked");
        }
    }
    state.counters["per_instance"] = benchmark::Counter(
        static_cast<double>(partCount), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    products.clear();
    documents.RemoveAll();
    CATDocumentServices::RemoveAll();
}
BENCHMARK(LinkProducts)->Name("Link of products")->Apply(Sizes);

} // namespace
