#include "CATPrdXmlReader.h"

#include <cstddef>
#include <fstream>
#include <iterator>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "CATPrdDocument.h"
#include "CATPrdStructure.h"
#include "CATXMLDocumentFactory.h"
#include "CATXMLStrictElement.h"
#include "CATXMLTextCheck.h"

namespace {

constexpr const char* LOADED = "loaded";
constexpr const char* VISUALIZATION = "visualization";
constexpr const char* BROKEN = "broken";

CATUnicodeString JoinPath(const CATUnicodeString& directory, const CATUnicodeString& path)
{
    if (path.IsEmpty() || directory.IsEmpty() || path.View().front() == '/') {
        return path;
    }
    return directory.View().back() == '/' ? directory + path : directory + "/" + path;
}

template <class Visit>
void ForEachChild(const CATXMLStrictElement& element, Visit visit)
{
    for (CATXMLStrictElement child = element.GetFirstChild(); child; child = child.GetNextSibling()) {
        visit(child);
    }
}

class Reader
{
public:
    explicit Reader(const CATUnicodeString& directory) : m_Directory(directory) {}

    CATPrdStructure Read(const CATXMLStrictElement& root)
    {
        if (!root.Is("products")) {
            root.Refuse("the element \"" + CATUnicodeString(root.GetTagName()) + "\"", "<products>");
        }
        root.CheckForm({"directory"}, {"product", "component"});
        m_Directory = root.Has("directory") ? JoinPath(m_Directory, root.GetText("directory")) : m_Directory;
        // Instances may name products that stand further down.
        ForEachChild(root, [this](const CATXMLStrictElement& element) { ReadReference(element); });
        for (std::size_t i = 0; i < m_ReferenceElements.size(); ++i) {
            ReadInstances(m_ReferenceElements[i], i);
        }
        if (const auto problem = m_Structure.FindProblem()) {
            const auto& elements = problem->isUsage ? m_UsageElements : m_ReferenceElements;
            elements[problem->position].Refuse(problem->problem, problem->expected);
        }
        return std::move(m_Structure);
    }

private:
    void ReadReference(const CATXMLStrictElement& element)
    {
        CATPrdReferenceData data;
        if (element.Is("component")) {
            element.CheckForm({"id", "shape", "partNumber", "nomenclature", "description", "definition", "revision"},
                              {"instance", "property", "designTable"});
            data.linkState = CATPrdLinkState::Embedded;
        } else {
            element.CheckForm({"id", "file", "type", "displayName", "link", "shape", "dirty", "open", "partNumber",
                               "nomenclature", "description", "definition", "revision"},
                              {"instance", "property", "designTable"});
            ReadLink(element, &data);
        }
        data.shapeStorageName = ReadPath(element, "shape");
        data.definition.partNumber = element.GetText("partNumber");
        data.definition.nomenclature = element.GetText("nomenclature");
        data.definition.descriptionRef = element.GetText("description");
        data.definition.definition = element.GetText("definition");
        data.definition.revision = element.GetText("revision");
        data.definition.userProperties = ReadProperties(element);
        ReadDesignTables(element, &data.definition.designTables);

        if (!m_References.emplace(element.GetName("id"), m_Structure.references.size()).second) {
            element.RefuseValue("id", "an id that no other product here has");
        }
        m_Structure.references.push_back(std::move(data));
        m_ReferenceElements.push_back(element);
    }

    void ReadLink(const CATXMLStrictElement& element, CATPrdReferenceData* pData)
    {
        pData->storageName = ReadPath(element, "file");
        pData->displayName = element.GetText("displayName");
        pData->isDirty = element.GetFlag("dirty", false);
        pData->isOpened = element.GetFlag("open", false);
        const CATUnicodeString link = element.GetText("link");
        if (link == VISUALIZATION) {
            pData->linkState = CATPrdLinkState::Visualization;
        } else if (link == BROKEN) {
            pData->linkState = CATPrdLinkState::Broken;
        } else if (element.Has("link") && !(link == LOADED)) {
            element.RefuseValue("link", R"("loaded", "visualization" or "broken")");
        }
        if (pData->isDirty && pData->linkState != CATPrdLinkState::Loaded) {
            element.RefuseValue("dirty", "a product that is loaded");
        }
        if (pData->isOpened && pData->linkState == CATPrdLinkState::Broken) {
            element.RefuseValue("open", "a product whose document is there");
        }
        pData->documentType =
            element.Has("type") ? element.GetText("type") : CATPrdDocument::GetTypeOfFile(pData->storageName);
        if (element.Has("type") && !CATPrdDocument::IsType(pData->documentType)) {
            element.RefuseValue("type", CATPrdDocument::GetTypeNames());
        }
    }

    CATUnicodeString ReadPath(const CATXMLStrictElement& element, const char* attribute) const
    {
        return element.Has(attribute) ? JoinPath(m_Directory, element.GetName(attribute)) : CATUnicodeString();
    }

    static CATPrdUserProperties ReadProperties(const CATXMLStrictElement& element)
    {
        CATPrdUserProperties properties;
        ForEachChild(element, [&properties](const CATXMLStrictElement& child) {
            if (!child.Is("property")) {
                return;
            }
            child.CheckForm({"name"}, {}, true);
            if (!properties.emplace(child.GetName("name"), child.GetContent()).second) {
                child.RefuseValue("name", "a name that no other <property> here has");
            }
        });
        return properties;
    }

    void ReadDesignTables(const CATXMLStrictElement& element, CATPrdDesignTables* pTables) const
    {
        ForEachChild(element, [this, pTables](const CATXMLStrictElement& child) {
            if (child.Is("designTable")) {
                child.CheckForm({"name", "file"}, {});
                pTables->emplace_back(child.GetName("name"), ReadPath(child, "file"));
            }
        });
    }

    void ReadInstances(const CATXMLStrictElement& element, std::size_t parent)
    {
        ForEachChild(element, [this, parent](const CATXMLStrictElement& child) {
            if (!child.Is("instance")) {
                return;
            }
            child.CheckForm({"of", "name", "description"}, {"property"});
            const auto found = m_References.find(child.GetName("of"));
            if (found == m_References.end()) {
                child.RefuseValue("of", "the id of a product or component here");
            }
            m_Structure.usages.push_back(CATPrdUsageData{parent, found->second, child.GetName("name"),
                                                         child.GetText("description"), ReadProperties(child)});
            m_UsageElements.push_back(child);
        });
    }

    CATUnicodeString m_Directory;
    CATPrdStructure m_Structure;
    std::unordered_map<CATUnicodeString, std::size_t> m_References;
    std::vector<CATXMLStrictElement> m_ReferenceElements;
    std::vector<CATXMLStrictElement> m_UsageElements;
};

// Reads from a document; getText gives its text, to count lines in, when something is wrong.
template <class GetText>
HRESULT Read(const CATIDOMDocument_var& spDocument, const CATUnicodeString& usSourceName,
             const CATUnicodeString& directory, GetText getText, CATPrdStructure* pStructure)
{
    CATIDOMElement_var spRoot;
    if (const HRESULT hr = spDocument->GetDocumentElement(&spRoot); FAILED(hr)) {
        return hr;
    }
    try {
        *pStructure = Reader(directory).Read(CATXMLStrictElement(spRoot->GetView()));
    } catch (const CATXMLRefusal& refusal) {
        return CATXMLTextCheck::Refuse(getText(), refusal.offset, usSourceName, refusal.problem, refusal.expected);
    }
    return S_OK;
}

} // namespace

HRESULT CATPrdXmlReader::ReadFile(const CATUnicodeString& usPath, CATPrdStructure* pStructure)
{
    if (pStructure == nullptr) {
        return E_POINTER;
    }
    CATIDOMDocument_var spDocument;
    if (const HRESULT hr = CATXMLDocumentFactory::ReadFile(usPath, &spDocument); FAILED(hr)) {
        return hr;
    }
    // The bytes of the file once more; empty when it is gone meanwhile.
    const auto readAgain = [&usPath] {
        std::ifstream file(usPath.ConvertToChar(), std::ios::binary);
        std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        return SUCCEEDED(CATXMLTextCheck::DecodeBytes(usPath, &text)) ? text : std::string();
    };
    const std::string_view path = usPath.View();
    const std::size_t slash = path.find_last_of('/');
    const CATUnicodeString directory(slash == std::string_view::npos ? path.substr(0, 0) : path.substr(0, slash + 1));
    return Read(spDocument, usPath, directory, readAgain, pStructure);
}

HRESULT CATPrdXmlReader::ReadText(const CATUnicodeString& usXml, const CATUnicodeString& usSourceName,
                                  CATPrdStructure* pStructure)
{
    if (pStructure == nullptr) {
        return E_POINTER;
    }
    CATIDOMDocument_var spDocument;
    if (const HRESULT hr = CATXMLDocumentFactory::ReadText(usXml, usSourceName, &spDocument); FAILED(hr)) {
        return hr;
    }
    return Read(
        spDocument, usSourceName, {}, [&usXml] { return usXml.View(); }, pStructure);
}
