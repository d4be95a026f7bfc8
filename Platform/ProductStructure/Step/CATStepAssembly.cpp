#include "CATStepAssembly.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <unordered_map>

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

class StructureReader
{
public:
    CATStepAssembly Read(const fs::path& path)
    {
        ReadFile(path);
        if (m_Assembly.products.empty()) {
            throw std::runtime_error(path.string() + ": the file holds no product");
        }
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
    };

    void ReadFile(const fs::path& path)
    {
        // Text that is not UTF-8 is repaired before the reader sees it, which would decode it into other letters.
        std::istringstream content(CATUnicodeString(ReadContent(path)).ConvertToChar());
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

        File file{path, {}};
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
        ReadExternalFiles(file, reader.WS());
    }

    static std::string ReadContent(const fs::path& path)
    {
        std::ifstream stream(path, std::ios::binary);
        if (!stream || !fs::is_regular_file(path)) {
            throw std::runtime_error(path.string() + ": the file cannot be read");
        }
        std::string content((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
        if (content.empty()) {
            throw std::runtime_error(path.string() + ": the file is empty");
        }
        // The reader tells nothing about a file that was cut off; its last statement tells.
        constexpr std::string_view END_MARK = "END-ISO-10303-21";
        if (content.rfind(END_MARK) == std::string::npos) {
            throw std::runtime_error(path.string() + ": not a complete STEP file (" + std::string(END_MARK) +
                                     " was expected at its end)");
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
        m_Assembly.usages.push_back(added);
    }

    void ReadExternalFiles(File& file, const Handle(XSControl_WorkSession) & session)
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
                ReadExternalFile(file.path.parent_path() / name, known->second);
            }
        }
    }

    // Continues the product with what its own file says: that file's root is the product.
    void ReadExternalFile(const fs::path& path, std::size_t product)
    {
        m_Assembly.products[product].file = CATUnicodeString(path.filename().string());
        if (!m_FilesRead.insert(fs::weakly_canonical(path).string()).second) {
            return;
        }
        if (!fs::exists(path)) {
            m_Assembly.products[product].isBrokenLink = true;
            return;
        }
        const std::size_t firstProduct = m_Assembly.products.size();
        const std::size_t firstUsage = m_Assembly.usages.size();
        ReadFile(path);
        const std::size_t root = FindRootFrom(firstProduct, firstUsage);
        if (root == m_Assembly.products.size()) {
            return;
        }
        for (std::size_t i = firstUsage; i < m_Assembly.usages.size(); ++i) {
            if (m_Assembly.usages[i].parent == root) {
                m_Assembly.usages[i].parent = product;
            }
        }
        if (m_Assembly.products[product].version.IsEmpty()) {
            m_Assembly.products[product].version = m_Assembly.products[root].version;
        }
        RemoveProduct(root);
    }

    std::size_t FindRootFrom(std::size_t firstProduct, std::size_t firstUsage) const
    {
        for (std::size_t i = firstProduct; i < m_Assembly.products.size(); ++i) {
            const bool isChild =
                std::any_of(m_Assembly.usages.begin() + static_cast<std::ptrdiff_t>(firstUsage),
                            m_Assembly.usages.end(), [i](const CATStepUsage& usage) { return usage.child == i; });
            if (!isChild) {
                return i;
            }
        }
        return m_Assembly.products.size();
    }

    void RemoveProduct(std::size_t removed)
    {
        m_Assembly.products.erase(m_Assembly.products.begin() + static_cast<std::ptrdiff_t>(removed));
        for (CATStepUsage& usage : m_Assembly.usages) {
            usage.parent -= usage.parent > removed ? 1 : 0;
            usage.child -= usage.child > removed ? 1 : 0;
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

    // Takes away products without parent, again and again; what stays is part of a loop.
    void CheckForLoops(const fs::path& path) const
    {
        std::vector<std::vector<std::size_t>> children(m_Assembly.products.size());
        std::vector<std::size_t> parents(m_Assembly.products.size(), 0);
        for (const CATStepUsage& usage : m_Assembly.usages) {
            children[usage.parent].push_back(usage.child);
            ++parents[usage.child];
        }
        std::vector<std::size_t> free = m_Assembly.roots;
        std::size_t taken = 0;
        while (!free.empty()) {
            const std::size_t product = free.back();
            free.pop_back();
            ++taken;
            for (const std::size_t child : children[product]) {
                if (--parents[child] == 0) {
                    free.push_back(child);
                }
            }
        }
        if (taken != m_Assembly.products.size()) {
            const auto looped = std::find_if(parents.begin(), parents.end(), [](std::size_t n) { return n > 0; });
            const auto index = static_cast<std::size_t>(looped - parents.begin());
            throw std::runtime_error(path.string() + ": the product \"" +
                                     std::string(m_Assembly.products[index].name.View()) + "\" contains itself");
        }
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

    CATStepAssembly m_Assembly;
    std::set<std::string> m_FilesRead;
};

} // namespace

std::size_t CATStepAssembly::CountOccurrences() const
{
    std::vector<std::vector<std::size_t>> children(products.size());
    for (const CATStepUsage& usage : usages) {
        children[usage.parent].push_back(usage.child);
    }
    std::size_t count = 0;
    std::vector<std::size_t> open = roots;
    while (!open.empty()) {
        const std::size_t product = open.back();
        open.pop_back();
        count += children[product].size();
        open.insert(open.end(), children[product].begin(), children[product].end());
    }
    return count;
}

std::size_t CATStepAssembly::GetDepth() const
{
    std::vector<std::vector<std::size_t>> children(products.size());
    for (const CATStepUsage& usage : usages) {
        children[usage.parent].push_back(usage.child);
    }
    std::size_t depth = 0;
    std::set<std::size_t> level(roots.begin(), roots.end());
    while (true) {
        std::set<std::size_t> next;
        for (const std::size_t product : level) {
            next.insert(children[product].begin(), children[product].end());
        }
        if (next.empty()) {
            return depth;
        }
        ++depth;
        level = std::move(next);
    }
}

CATStepAssembly CATReadStepAssembly(const std::string& path)
{
    // The reader's own remarks would land on the terminal.
    Message::DefaultMessenger()->ChangePrinters().Clear();
    return StructureReader().Read(path);
}
