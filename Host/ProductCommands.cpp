#include "ProductCommands.h"

#include <iostream>
#include <memory>
#include <set>

#include <fmt/format.h>
#include <fmt/ostream.h>
#include <nlohmann/json.hpp>

#include "HostSession.h"
#include "ProductDocuments.h"
#include "ProductTree.h"
#include "QTBDebugUtil.h"
#include "QTBIPsnNode.h"
#include "QTBLoadManager.h"
#include "QTBPsnTreeUtil.h"

namespace {

using Json = nlohmann::ordered_json;

std::string ToText(const CATUnicodeString& text)
{
    return std::string(text.View());
}

Json ToJson(const CATListValCATUnicodeString& texts)
{
    Json array = Json::array();
    for (const CATUnicodeString& text : texts) {
        array.push_back(ToText(text));
    }
    return array;
}

QTBIPsnNode_var GetPsnNode(const CATIProduct_var& spIProduct)
{
    QTBIPsnNode_var spIPsnNode(spIProduct);
    if (spIPsnNode == NULL_var) {
        throw HostError(ExitCode::Failure, "products do not answer the PDM interfaces");
    }
    return spIPsnNode;
}

// The first place of each reference: of each document, and of each component.
std::vector<ProductTree::Place> CollectReferences(const CATListValCATBaseUnknown_var& documents)
{
    std::vector<ProductTree::Place> first;
    std::set<ProductDocuments::Identity> seen;
    for (const ProductTree::Place& place : ProductTree::Collect(documents)) {
        if (seen.insert(ProductDocuments::GetIdentity(place.spIProduct)).second) {
            first.push_back(place);
        }
    }
    return first;
}

void Print(const Json& result, bool asJson, const std::string& text)
{
    std::cout << (asJson ? result.dump(2) + "\n" : text);
}

void SetDebug(const ProductOptions& options)
{
    QTBDebugUtil::s_bGlobalDebugStatus = options.debug ? TRUE : FALSE;
}

} // namespace

namespace {

// Texts of the first list that the second does not have, each as often as it has more of them.
CATListValCATUnicodeString Subtract(const CATListValCATUnicodeString& texts, const CATListValCATUnicodeString& others)
{
    std::multiset<CATUnicodeString> left(others.begin(), others.end());
    CATListValCATUnicodeString result;
    for (const CATUnicodeString& text : texts) {
        if (const auto found = left.find(text); found != left.end()) {
            left.erase(found);
        } else {
            result.Append(text);
        }
    }
    return result;
}

// The instances of a product as they were saved, and as they are.
void CompareInstances(const CATIProduct_var& spIProduct, CATListValCATUnicodeString* pAdded,
                      CATListValCATUnicodeString* pMissing)
{
    CATListValCATUnicodeString saved;
    g_QTBLoadManager.GetChildInstanceInfosAtLoad(spIProduct->GetPartNumber(), &saved);
    CATListValCATUnicodeString current;
    const std::unique_ptr<CATListValCATBaseUnknown_var> pChildren(spIProduct->GetChildren("CATIProduct"));
    for (const CATBaseUnknown_var& spChild : *pChildren) {
        CATUnicodeString usRelationKey;
        CATUnicodeString usInstanceName;
        if (SUCCEEDED(QTBPsnTreeUtil::GetInstanceAttributes(spChild, &usRelationKey, &usInstanceName))) {
            current.Append(QTBLoadManager::MakeInstanceKey(usRelationKey, usInstanceName));
        }
    }
    *pAdded = Subtract(current, saved);
    *pMissing = Subtract(saved, current);
}

} // namespace

int RunDiff(const ProductOptions& options)
{
    SetDebug(options);
    HostSession session(options.schema, options.language);
    for (const std::string& answer : options.answers) {
        session.ReadAnswer(answer);
    }
    const CATListValCATBaseUnknown_var oldDocuments = session.OpenAssembly(options.oldAssembly);
    for (const ProductTree::Place& place : ProductTree::Collect(oldDocuments)) {
        if (place.level == 0) {
            HostSession::Require(GetPsnNode(place.spIProduct)->SaveCurrentChildInstanceInfoStrings(), ExitCode::Failure,
                                 options.oldAssembly);
        }
    }
    session.CloseAssemblies();

    Json products = Json::array();
    std::string text;
    int added = 0;
    int missing = 0;
    for (const ProductTree::Place& place : CollectReferences(session.OpenAssembly(options.assembly))) {
        CATListValCATUnicodeString additional;
        CATListValCATUnicodeString gone;
        if (options.answers.empty()) {
            CompareInstances(place.spIProduct, &additional, &gone);
        } else {
            HostSession::Require(
                GetPsnNode(place.spIProduct)->CheckCurrentChildInstanceInfoLists(&additional, &gone, FALSE),
                ExitCode::Failure, place.path);
        }
        if (additional.Size() + gone.Size() == 0) {
            continue;
        }
        added += additional.Size();
        missing += gone.Size();
        const std::string partNumber = ToText(place.spIProduct->GetPartNumber());
        products.push_back({{"partNumber", partNumber}, {"added", ToJson(additional)}, {"missing", ToJson(gone)}});
        text += partNumber + "\n";
        for (const CATUnicodeString& name : additional) {
            text += fmt::format("  + {}\n", name.View());
        }
        for (const CATUnicodeString& name : gone) {
            text += fmt::format("  - {}\n", name.View());
        }
    }
    text += fmt::format("{} {} added, {} missing\n", added, added == 1 ? "instance" : "instances", missing);
    Print({{"products", products}, {"added", added}, {"missing", missing}}, options.asJson, text);
    return static_cast<int>(ExitCode::Success);
}

int RunDirty(const ProductOptions& options)
{
    SetDebug(options);
    HostSession session(options.schema, options.language);
    for (const std::string& answer : options.answers) {
        session.ReadAnswer(answer);
    }
    Json products = Json::array();
    std::string text;
    int dirty = 0;
    for (const ProductTree::Place& place : CollectReferences(session.OpenAssembly(options.assembly))) {
        if (ProductDocuments::IsComponent(place.spIProduct)) {
            continue;
        }
        unsigned char bIsDirty = FALSE;
        unsigned char bHasDesignTables = FALSE;
        const HRESULT hr = GetPsnNode(place.spIProduct)->DocumentIsDirty(&bIsDirty, &bHasDesignTables);
        const std::string label = ProductTree::GetLabel(place.spIProduct);
        const std::string file = ProductDocuments::GetFileName(place.spIProduct);
        const std::string why = FAILED(hr) ? HostSession::Describe(hr)
                                           : ProductDocuments::Explain(place.spIProduct, bIsDirty != FALSE) +
                                                 (bHasDesignTables != FALSE ? "; has design tables" : "");
        dirty += bIsDirty != FALSE ? 1 : 0;
        products.push_back({{"product", label}, {"file", file}, {"toBeSaved", bIsDirty != FALSE}, {"why", why}});
        text += fmt::format("{} {}{}{}: {}\n", bIsDirty != FALSE ? "save" : "keep", label, file.empty() ? "" : ", ",
                            file, why);
    }
    text += fmt::format("{} of {} documents have to be saved\n", dirty, products.size());
    Print({{"products", products}, {"toBeSaved", dirty}}, options.asJson, text);
    return static_cast<int>(ExitCode::Success);
}

int RunTypes(const ProductOptions& options)
{
    SetDebug(options);
    HostSession session(options.schema, options.language);
    for (const std::string& answer : options.answers) {
        session.ReadAnswer(answer);
    }
    Json products = Json::array();
    std::string text;
    for (const ProductTree::Place& place : CollectReferences(session.OpenAssembly(options.assembly))) {
        const QTBIPsnNode_var spIPsnNode = GetPsnNode(place.spIProduct);
        CATUnicodeString usType;
        CATUnicodeString usFileName;
        spIPsnNode->GetPsnNodeType(&usType, &usFileName);
        CATUnicodeString usPdmType;
        CATUnicodeString usPdmTypeNls;
        unsigned char bIsDerived = FALSE;
        spIPsnNode->GetPdmNodeType(&usPdmType, &usPdmTypeNls, &bIsDerived);
        CATListValCATUnicodeString commands;
        spIPsnNode->GetPdmNodeTypeCommandHeaderIds(&commands);
        const std::string label = ProductTree::GetLabel(place.spIProduct);
        products.push_back({{"product", label},
                            {"type", ToText(usType)},
                            {"file", ToText(usFileName)},
                            {"pdmNodeType", ToText(usPdmType)},
                            {"display", ToText(usPdmTypeNls)},
                            {"isDerived", bIsDerived != FALSE},
                            {"commands", ToJson(commands)}});
        text += fmt::format("{}: {}{}{}, PDM node type {}{}\n", label, usType.View(), usFileName.IsEmpty() ? "" : " ",
                            usFileName.View(), usPdmType.IsEmpty() ? "unknown" : usPdmType.View(),
                            bIsDerived != FALSE ? " (derived)" : "");
        for (const CATUnicodeString& command : commands) {
            text += fmt::format("    {}\n", command.View());
        }
    }
    Print({{"products", products}}, options.asJson, text);
    return static_cast<int>(ExitCode::Success);
}
