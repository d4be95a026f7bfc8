#include "CATStepAssembly.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>
#include <numeric>
#include <optional>
#include <set>
#include <sstream>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include <IFSelect_ReturnStatus.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <STEPConstruct_ExternRefs.hxx>
#include <STEPControl_Reader.hxx>
#include <Standard_Failure.hxx>
#include <StepBasic_Product.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepBasic_ProductDefinitionFormation.hxx>
#include <StepRepr_NextAssemblyUsageOccurrence.hxx>
#include <TCollection_HAsciiString.hxx>
#include <XSControl_WorkSession.hxx>

#include "CATEnvLimit.h"
#include "CATStepShapes.h"
#include "CATStepTextCheck.h"

namespace fs = std::filesystem;

namespace {

// The names that systems write where they have nothing to say are a blank or nothing.
CATUnicodeString ToText(const Handle(TCollection_HAsciiString) & text)
{
    if (text.IsNull()) {
        return {};
    }
    std::string_view view(text->ToCString(), static_cast<std::size_t>(text->Length()));
    const auto first = view.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    view = view.substr(first, view.find_last_not_of(' ') - first + 1);
    return CATUnicodeString(view);
}

constexpr std::size_t NONE = static_cast<std::size_t>(-1);

std::vector<std::vector<std::size_t>> ListChildren(const CATStepAssembly& assembly)
{
    std::vector<std::vector<std::size_t>> children(assembly.products.size());
    for (const CATStepUsage& usage : assembly.usages) {
        children[usage.parent].push_back(usage.child);
    }
    return children;
}

// The products from the roots down, parents before children. Products in a loop, and all below, are left out.
// missingParents receives how many parents of each product are left out.
std::vector<std::size_t> SortDownwards(const CATStepAssembly& assembly, std::vector<std::size_t>* pMissingParents)
{
    const std::vector<std::vector<std::size_t>> children = ListChildren(assembly);
    std::vector<std::size_t> parents(assembly.products.size(), 0);
    for (const CATStepUsage& usage : assembly.usages) {
        ++parents[usage.child];
    }
    std::vector<std::size_t> sorted = assembly.roots;
    for (std::size_t next = 0; next < sorted.size(); ++next) {
        for (const std::size_t child : children[sorted[next]]) {
            if (--parents[child] == 0) {
                sorted.push_back(child);
            }
        }
    }
    if (pMissingParents != nullptr) {
        *pMissingParents = std::move(parents);
    }
    return sorted;
}

class StructureReader
{
public:
    explicit StructureReader(CATStepContent content) : m_Content(content) {}

    CATStepAssembly Read(const fs::path& path)
    {
        m_Files[fs::weakly_canonical(path).string()] = ReadFile(path);
        // Files refer to further files, in chains of any length.
        for (std::size_t next = 0; next < m_References.size(); ++next) {
            ReadFileReferredTo(m_References[next]);
        }
        if (m_Assembly.products.empty()) {
            throw std::runtime_error(path.string() + ": the file holds no product");
        }
        MergeProductsOfOneFile();
        FindRoots(path);
        NameInstances();
        return std::move(m_Assembly);
    }

private:
    using Definition = Handle(StepBasic_ProductDefinition);

    // What a file being read adds to: its own products by their entities.
    struct File
    {
        fs::path path;
        std::unordered_map<const void*, std::size_t> products;
        // None when shapes were not asked for.
        std::optional<CATStepShapes> shapes;
    };

    // A product whose content stands in another file.
    struct Reference
    {
        std::size_t product;
        fs::path path;
    };

    // Adds the products and usages of a file. Gives the product that the file is about, the first that is part of no
    // other, NONE when there is none.
    std::size_t ReadFile(const fs::path& path)
    {
        const std::size_t firstProduct = m_Assembly.products.size();
        const std::size_t firstUsage = m_Assembly.usages.size();
        std::istringstream content(ReadContent(path));
        STEPControl_Reader reader;
        IFSelect_ReturnStatus status = IFSelect_RetError;
        try {
            status = reader.ReadStream(path.c_str(), content);
        } catch (const Standard_Failure& failure) {
            throw std::runtime_error(path.string() + ": " + failure.GetMessageString());
        }
        if (status != IFSelect_RetDone) {
            throw std::runtime_error(path.string() + ": not a complete STEP file (ISO 10303-21 was expected)");
        }

        File file{path, {}, std::nullopt};
        if (m_Content == CATStepContent::StructureAndBoxes) {
            file.shapes.emplace(reader);
        }
        const Handle(Interface_InterfaceModel) model = reader.WS()->Model();
        std::vector<Handle(StepRepr_NextAssemblyUsageOccurrence)> occurrences;
        std::vector<Definition> definitions;
        for (Standard_Integer i = 1; i <= model->NbEntities(); ++i) {
            const Handle(Standard_Transient) entity = model->Value(i);
            if (const auto usage = Handle(StepRepr_NextAssemblyUsageOccurrence)::DownCast(entity); !usage.IsNull()) {
                occurrences.push_back(usage);
            } else if (const auto definition = Definition::DownCast(entity); !definition.IsNull()) {
                definitions.push_back(definition);
            }
        }
        for (const auto& usage : occurrences) {
            AddUsage(file, usage);
        }
        // A file without usages is a single part. Products that no usage names are auxiliary records otherwise.
        if (occurrences.empty() && !definitions.empty()) {
            AddProduct(file, definitions.front());
        }
        CollectReferences(file, reader.WS());
        return FindRootFrom(firstProduct, firstUsage);
    }

    // Text that is not UTF-8 is repaired before the reader sees it, which would decode it into other letters.
    static std::string ReadContent(const fs::path& path)
    {
        // In this order: opening a pipe waits for somebody who writes to it.
        std::ifstream stream;
        if (fs::is_regular_file(path)) {
            stream.open(path, std::ios::binary);
        }
        if (!stream.is_open()) {
            throw std::runtime_error(path.string() + ": the file cannot be read");
        }
        const auto most = static_cast<std::uintmax_t>(CATGetMaxFileBytes());
        if (const std::uintmax_t size = fs::file_size(path); size > most) {
            throw std::runtime_error(path.string() + ": " + std::to_string(size) + " bytes; expected were at most " +
                                     std::to_string(most) + " bytes (CAT_MAX_FILE_MB)");
        }
        const std::string bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
        if (bytes.empty()) {
            throw std::runtime_error(path.string() + ": the file is empty");
        }
        std::string content(CATUnicodeString(std::string_view(bytes)).View());
        if (const auto refusal = CATStepTextCheck::Check(content)) {
            throw std::runtime_error(path.string() + ", line " + std::to_string(refusal->line) + ": " +
                                     refusal->problem + "; expected was " + refusal->expected);
        }
        return content;
    }

    std::size_t AddProduct(File& file, const Definition& definition)
    {
        const auto [entry, isNew] = file.products.try_emplace(definition.get(), m_Assembly.products.size());
        if (isNew) {
            CATStepProduct product;
            const auto formation = definition->Formation();
            if (!formation.IsNull()) {
                product.version = ToText(formation->Id());
                if (const auto item = formation->OfProduct(); !item.IsNull()) {
                    product.id = ToText(item->Id());
                    product.name = ToText(item->Name());
                    product.description = ToText(item->Description());
                }
            }
            if (product.id.IsEmpty()) {
                product.id = product.name;
            }
            if (product.id.IsEmpty()) {
                CATUnicodeString number;
                number.BuildFromNum(static_cast<int>(m_Assembly.products.size()) + 1);
                product.id = "Product" + number;
            }
            if (product.name.IsEmpty()) {
                product.name = product.id;
            }
            product.file = CATUnicodeString(file.path.filename().string());
            if (file.shapes) {
                product.box = file.shapes->FindBox(definition);
            }
            m_Assembly.products.push_back(product);
        }
        return entry->second;
    }

    void AddUsage(File& file, const Handle(StepRepr_NextAssemblyUsageOccurrence) & usage)
    {
        const Definition parent = usage->RelatingProductDefinition();
        const Definition child = usage->RelatedProductDefinition();
        if (parent.IsNull() || child.IsNull()) {
            return;
        }
        const std::size_t parentIndex = AddProduct(file, parent);
        const std::size_t childIndex = AddProduct(file, child);
        CATStepUsage added{parentIndex, childIndex, ToText(usage->Name()), CATStepNameOrigin::File};
        if (added.instanceName.IsEmpty() && usage->HasReferenceDesignator()) {
            added.instanceName = ToText(usage->ReferenceDesignator());
            added.origin = CATStepNameOrigin::Designator;
        }
        if (added.instanceName.IsEmpty()) {
            added.origin = CATStepNameOrigin::Derived;
        }
        if (file.shapes) {
            added.placement = file.shapes->FindPlacement(usage);
        }
        m_Assembly.usages.push_back(added);
    }

    void CollectReferences(const File& file, const Handle(XSControl_WorkSession) & session)
    {
        STEPConstruct_ExternRefs references(session);
        references.LoadExternRefs();
        for (Standard_Integer i = 1; i <= references.NbExternRefs(); ++i) {
            const Definition definition = references.ProdDef(i);
            const Standard_CString name = references.FileName(i);
            if (definition.IsNull() || name == nullptr) {
                continue;
            }
            const auto known = file.products.find(definition.get());
            if (known != file.products.end()) {
                m_References.push_back({known->second, file.path.parent_path() / name});
            }
        }
    }

    // The product that a file is about stands for every product that refers to the file.
    void ReadFileReferredTo(const Reference reference)
    {
        m_Assembly.products[reference.product].file = CATUnicodeString(reference.path.filename().string());
        if (!fs::exists(reference.path)) {
            m_Missing.push_back(reference.product);
            return;
        }
        const auto [entry, isNew] = m_Files.try_emplace(fs::weakly_canonical(reference.path).string(), NONE);
        std::size_t& root = entry->second;
        if (isNew) {
            root = ReadFile(reference.path);
        }
        if (root != NONE) {
            m_SameProducts.emplace_back(reference.product, root);
        }
    }

    std::size_t FindRootFrom(std::size_t firstProduct, std::size_t firstUsage) const
    {
        std::vector<bool> isChild(m_Assembly.products.size() - firstProduct, false);
        for (std::size_t i = firstUsage; i < m_Assembly.usages.size(); ++i) {
            isChild[m_Assembly.usages[i].child - firstProduct] = true;
        }
        const auto root = std::find(isChild.begin(), isChild.end(), false);
        return root != isChild.end() ? firstProduct + static_cast<std::size_t>(root - isChild.begin()) : NONE;
    }

    // Products that stand for the same one become that which was read first. It keeps its texts, which are those of a
    // file that refers to it; a version that they lack comes from the others.
    void MergeProductsOfOneFile()
    {
        std::vector<CATStepProduct>& products = m_Assembly.products;
        std::vector<std::size_t> first(products.size());
        std::iota(first.begin(), first.end(), std::size_t{0});
        const auto find = [&first](std::size_t i) {
            while (first[i] != i) {
                i = first[i] = first[first[i]];
            }
            return i;
        };
        for (const auto& [a, b] : m_SameProducts) {
            const std::size_t firstOfA = find(a);
            const std::size_t firstOfB = find(b);
            first[std::max(firstOfA, firstOfB)] = std::min(firstOfA, firstOfB);
        }
        std::vector<bool> hasFile(products.size(), false);
        for (const auto& same : m_SameProducts) {
            hasFile[find(same.first)] = true;
        }
        for (const std::size_t product : m_Missing) {
            products[find(product)].isBrokenLink = !hasFile[find(product)];
        }
        std::vector<std::size_t> newPositions(products.size());
        std::vector<CATStepProduct> kept;
        for (std::size_t i = 0; i < products.size(); ++i) {
            const std::size_t representative = find(i);
            if (representative == i) {
                newPositions[i] = kept.size();
                kept.push_back(products[i]);
            } else {
                newPositions[i] = newPositions[representative];
                CATStepProduct& product = kept[newPositions[i]];
                product.version = product.version.IsEmpty() ? products[i].version : product.version;
                product.box = product.box ? product.box : products[i].box;
            }
        }
        products = std::move(kept);
        for (CATStepUsage& usage : m_Assembly.usages) {
            usage.parent = newPositions[usage.parent];
            usage.child = newPositions[usage.child];
        }
    }

    void FindRoots(const fs::path& path)
    {
        std::vector<bool> isChild(m_Assembly.products.size(), false);
        for (const CATStepUsage& usage : m_Assembly.usages) {
            isChild[usage.child] = true;
        }
        for (std::size_t i = 0; i < isChild.size(); ++i) {
            if (!isChild[i]) {
                m_Assembly.roots.push_back(i);
            }
        }
        CheckForLoops(path);
    }

    // Each product that is left out has a parent that is left out, so the way up from any of them runs into a loop.
    void CheckForLoops(const fs::path& path) const
    {
        std::vector<std::size_t> parents;
        if (SortDownwards(m_Assembly, &parents).size() == m_Assembly.products.size()) {
            return;
        }
        std::vector<std::size_t> parentOf(m_Assembly.products.size(), NONE);
        for (const CATStepUsage& usage : m_Assembly.usages) {
            if (parents[usage.parent] > 0) {
                parentOf[usage.child] = usage.parent;
            }
        }
        const auto looped = std::find_if(parents.begin(), parents.end(), [](std::size_t n) { return n > 0; });
        auto current = static_cast<std::size_t>(looped - parents.begin());
        std::vector<bool> isSeen(m_Assembly.products.size(), false);
        while (!isSeen[current]) {
            isSeen[current] = true;
            current = parentOf[current];
        }
        throw std::runtime_error(path.string() + ": the product \"" +
                                 std::string(m_Assembly.products[current].name.View()) + "\" contains itself");
    }

    // A name made for an instance is the child's name, a dot and the first number that no sibling uses.
    void NameInstances()
    {
        std::map<std::size_t, std::set<CATUnicodeString>> usedBelow;
        for (const CATStepUsage& usage : m_Assembly.usages) {
            usedBelow[usage.parent].insert(usage.instanceName);
        }
        std::map<std::pair<std::size_t, CATUnicodeString>, int> lastNumber;
        for (CATStepUsage& usage : m_Assembly.usages) {
            if (usage.origin != CATStepNameOrigin::Derived) {
                continue;
            }
            const CATUnicodeString& base = m_Assembly.products[usage.child].name;
            int& number = lastNumber[{usage.parent, base}];
            do {
                CATUnicodeString text;
                text.BuildFromNum(++number);
                usage.instanceName = base + "." + text;
            } while (!usedBelow[usage.parent].insert(usage.instanceName).second);
        }
    }

    const CATStepContent m_Content;
    CATStepAssembly m_Assembly;
    // The product that each file read is about, NONE for a file without one.
    std::map<std::string, std::size_t> m_Files;
    // Grows while it is worked on.
    std::vector<Reference> m_References;
    std::vector<std::pair<std::size_t, std::size_t>> m_SameProducts;
    std::vector<std::size_t> m_Missing;
};

} // namespace

std::size_t CATStepAssembly::CountOccurrences() const
{
    constexpr std::size_t MANY = std::numeric_limits<std::size_t>::max();
    const auto add = [](std::size_t a, std::size_t b) { return a > MANY - b ? MANY : a + b; };
    const std::vector<std::vector<std::size_t>> children = ListChildren(*this);
    std::vector<std::size_t> occurrences(products.size(), 0);
    for (const std::size_t root : roots) {
        occurrences[root] = 1;
    }
    std::size_t count = 0;
    for (const std::size_t product : SortDownwards(*this, nullptr)) {
        for (const std::size_t child : children[product]) {
            occurrences[child] = add(occurrences[child], occurrences[product]);
            count = add(count, occurrences[product]);
        }
    }
    return count;
}

std::size_t CATStepAssembly::GetDepth() const
{
    const std::vector<std::vector<std::size_t>> children = ListChildren(*this);
    std::vector<std::size_t> depths(products.size(), 0);
    std::size_t depth = 0;
    for (const std::size_t product : SortDownwards(*this, nullptr)) {
        for (const std::size_t child : children[product]) {
            depths[child] = std::max(depths[child], depths[product] + 1);
            depth = std::max(depth, depths[child]);
        }
    }
    return depth;
}

CATStepAssembly CATReadStepAssembly(const std::string& path, CATStepContent content)
{
    // The reader's own remarks would land on the terminal.
    Message::DefaultMessenger()->ChangePrinters().Clear();
    return StructureReader(content).Read(path);
}
