#include "ProductCommands.h"

#include <iostream>
#include <map>
#include <memory>
#include <set>
#include <utility>

#include <fmt/format.h>
#include <fmt/ostream.h>
#include <nlohmann/json.hpp>

#include "HostSession.h"
#include "HostText.h"
#include "ProductDocuments.h"
#include "ProductTree.h"
#include "QTBDebugUtil.h"
#include "QTBIPdmRelNode.h"
#include "QTBIPsnNode.h"
#include "QTBLoadManager.h"

using HostText::ToText;

namespace {

using Json = nlohmann::ordered_json;

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

// What is left out of them is told beside the result.
void ReadAnswers(HostSession& session, const ProductOptions& options)
{
    for (const std::string& answer : options.answers) {
        if (const std::string leftOut = session.ReadAnswerArgument(answer); !leftOut.empty()) {
            std::cerr << "qtbhost: " << leftOut << '\n';
        }
    }
}

void SetDebug(const ProductOptions& options)
{
    QTBDebugUtil::s_bGlobalDebugStatus = options.debug ? TRUE : FALSE;
}

using Texts = std::vector<std::string>;

// Texts of the first list that the second does not have, each as often as it has more of them.
Texts Subtract(const Texts& texts, const Texts& others)
{
    std::multiset<std::string> left(others.begin(), others.end());
    Texts result;
    for (const std::string& text : texts) {
        if (const auto found = left.find(text); found != left.end()) {
            left.erase(found);
        } else {
            result.push_back(text);
        }
    }
    return result;
}

Texts ToTexts(const CATListValCATUnicodeString& texts)
{
    Texts result;
    for (const CATUnicodeString& text : texts) {
        result.push_back(ToText(text));
    }
    return result;
}

// A product of one of two assemblies, with its instances by name and part.
struct Content
{
    std::string partNumber;
    std::string file;
    std::string path; // of its first place
    Texts instances;
};

// A part whose number is not known, because its document is not loaded, goes by its file.
std::string GetInstanceText(const CATIProduct_var& spIProduct)
{
    const std::string file =
        spIProduct->GetPartNumber().IsEmpty() ? ProductDocuments::GetFileName(spIProduct) : std::string();
    return ProductTree::GetLabel(spIProduct) + (file.empty() ? "" : " (" + file + ")");
}

std::vector<Content> ReadContents(const std::vector<ProductTree::Place>& references)
{
    std::vector<Content> contents;
    for (const ProductTree::Place& place : references) {
        Content content{
            ToText(place.spIProduct->GetPartNumber()), ProductDocuments::GetFileName(place.spIProduct), place.path, {}};
        const std::unique_ptr<CATListValCATBaseUnknown_var> pChildren(place.spIProduct->GetChildren("CATIProduct"));
        for (const CATBaseUnknown_var& spChild : *pChildren) {
            content.instances.push_back(GetInstanceText(CATIProduct_var(spChild)));
        }
        contents.push_back(std::move(content));
    }
    return contents;
}

void AddSharedNumbers(const std::vector<Content>& contents, std::set<std::string>* pShared)
{
    std::set<std::string> seen;
    for (const Content& content : contents) {
        if (!seen.insert(content.partNumber).second) {
            pShared->insert(content.partNumber);
        }
    }
}

// What changed in a product.
struct ProductChange
{
    std::string name;
    std::string partNumber;
    Texts added;
    Texts missing;
};

// Tells the products of two assemblies apart: by part number, where several documents of one have the same by the file
// too, and without number by the file or, failing that, by the place.
class ProductNames
{
public:
    ProductNames(const std::vector<Content>& contents, const std::vector<Content>& others)
    {
        AddSharedNumbers(contents, &m_Shared);
        AddSharedNumbers(others, &m_Shared);
    }
    std::string Get(const Content& content) const
    {
        const std::string& file = content.file.empty() ? content.path : content.file;
        if (content.partNumber.empty()) {
            return file;
        }
        return content.partNumber + (m_Shared.contains(content.partNumber) ? " (" + file + ")" : "");
    }

private:
    std::set<std::string> m_Shared;
};

// Compares what stands in the products, those of the new assembly first.
std::vector<ProductChange> CompareContents(const std::vector<Content>& oldContents,
                                           const std::vector<Content>& newContents)
{
    const ProductNames names(oldContents, newContents);
    std::vector<ProductChange> changes;
    std::map<std::string, std::pair<Texts, Texts>> instances;
    for (const std::vector<Content>* pContents : {&newContents, &oldContents}) {
        for (const Content& content : *pContents) {
            const std::string name = names.Get(content);
            const auto [found, isNew] = instances.try_emplace(name);
            Texts& texts = pContents == &newContents ? found->second.first : found->second.second;
            texts.insert(texts.end(), content.instances.begin(), content.instances.end());
            if (isNew) {
                changes.push_back({name, content.partNumber, {}, {}});
            }
        }
    }
    for (ProductChange& change : changes) {
        const auto& [current, former] = instances[change.name];
        change.added = Subtract(current, former);
        change.missing = Subtract(former, current);
    }
    return changes;
}

// The same as the PDM session sees it, which kept the instances of the old assembly.
std::vector<ProductChange> CompareInPdmSession(const std::vector<Content>& oldContents,
                                               const std::vector<ProductTree::Place>& references)
{
    std::vector<ProductChange> changes;
    std::set<std::string> current;
    for (const ProductTree::Place& place : references) {
        CATListValCATUnicodeString added;
        CATListValCATUnicodeString missing;
        HostSession::Require(GetPsnNode(place.spIProduct)->CheckCurrentChildInstanceInfoLists(&added, &missing, FALSE),
                             ExitCode::Failure, place.path);
        const std::string partNumber = ToText(place.spIProduct->GetPartNumber());
        current.insert(partNumber);
        changes.push_back({partNumber, partNumber, ToTexts(added), ToTexts(missing)});
    }
    // Nobody asks a product that is gone; its instances are missing likewise when the PDM data know them.
    for (const Content& content : oldContents) {
        CATListValCATUnicodeString saved;
        if (!current.insert(content.partNumber).second ||
            FAILED(g_QTBLoadManager.GetChildInstanceInfosAtLoad(content.partNumber.c_str(), &saved))) {
            continue;
        }
        ProductChange change{content.partNumber, content.partNumber, {}, {}};
        for (const CATUnicodeString& usKey : saved) {
            QTBIPdmRelNode_var spIPdmRelNode;
            if (SUCCEEDED(g_QTBLoadManager.GetPdmRelationForInstance(usKey, &spIPdmRelNode))) {
                change.missing.push_back(ToText(usKey));
            }
        }
        changes.push_back(std::move(change));
    }
    return changes;
}

} // namespace

int RunDiff(const ProductOptions& options)
{
    SetDebug(options);
    HostSession session(options.schema, options.language);
    ReadAnswers(session, options);
    std::vector<Content> oldContents;
    {
        const CATListValCATBaseUnknown_var oldDocuments = session.OpenAssembly(options.oldAssembly);
        const std::vector<ProductTree::Place> oldReferences = CollectReferences(oldDocuments);
        oldContents = ReadContents(oldReferences);
        for (const ProductTree::Place& place : oldReferences) {
            if (place.level == 0) {
                HostSession::Require(GetPsnNode(place.spIProduct)->SaveCurrentChildInstanceInfoStrings(),
                                     ExitCode::Failure, options.oldAssembly);
            }
        }
    }
    session.CloseAssemblies();

    const std::vector<ProductTree::Place> references = CollectReferences(session.OpenAssembly(options.assembly));
    const std::vector<ProductChange> changes = options.answers.empty()
                                                   ? CompareContents(oldContents, ReadContents(references))
                                                   : CompareInPdmSession(oldContents, references);
    Json products = Json::array();
    std::string text;
    std::size_t added = 0;
    std::size_t missing = 0;
    for (const ProductChange& change : changes) {
        if (change.added.size() + change.missing.size() == 0) {
            continue;
        }
        added += change.added.size();
        missing += change.missing.size();
        products.push_back({{"product", change.name},
                            {"partNumber", change.partNumber},
                            {"added", change.added},
                            {"missing", change.missing}});
        text += change.name + "\n";
        for (const std::string& name : change.added) {
            text += fmt::format("  + {}\n", name);
        }
        for (const std::string& name : change.missing) {
            text += fmt::format("  - {}\n", name);
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
    ReadAnswers(session, options);
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
    ReadAnswers(session, options);
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
