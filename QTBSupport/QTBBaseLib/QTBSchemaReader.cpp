#include "QTBSchemaReader.h"

#include <fstream>
#include <iterator>
#include <string>

#include "CATIDOMDocument.h"
#include "CATXMLTextCheck.h"
#include "QTBXmlUtil.h"

namespace {

constexpr int MAX_LENGTH = 1000000;
constexpr int MAX_LEVEL = 1000000;

struct SystemName
{
    const char* text;
    QTBPdmSystem system;
};
constexpr SystemName SYSTEMS[] = {{"ARAS_INNOVATOR", QTB_PDMSYSTEM_ARAS_INNOVATOR},
                                  {"ENOVIA_MATRIX", QTB_PDMSYSTEM_ENOVIA_MATRIX}};

// The bytes of the file once more, to count lines in; empty when it is gone meanwhile.
std::string ReadTextAgain(const CATUnicodeString& usPath)
{
    std::ifstream file(usPath.ConvertToChar(), std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    return SUCCEEDED(CATXMLTextCheck::DecodeBytes(usPath, &text)) ? text : std::string();
}

} // namespace

QTBSchemaReader::QTBSchemaReader() : m_pSchema(new QTBSchema()) {}

QTBSchemaReader::~QTBSchemaReader() = default;

HRESULT QTBSchemaReader::ReadFile(const CATUnicodeString& usPath, std::unique_ptr<QTBSchema>* ppSchema)
{
    if (ppSchema == nullptr) {
        return E_POINTER;
    }
    CATIDOMDocument_var spIDOMDocument;
    CATIDOMElement_var spIDOMElementOnRoot;
    HRESULT hr = QTBXmlUtil::GetDomDocumentFromFile(usPath, &spIDOMDocument);
    if (SUCCEEDED(hr)) {
        hr = spIDOMDocument->GetDocumentElement(&spIDOMElementOnRoot);
    }
    if (FAILED(hr)) {
        return hr;
    }
    try {
        QTBSchemaReader reader;
        reader.ReadSchema(CATXMLStrictElement(spIDOMElementOnRoot->GetView()));
        *ppSchema = std::move(reader.m_pSchema);
    } catch (const CATXMLRefusal& refusal) {
        return CATXMLTextCheck::Refuse(ReadTextAgain(usPath), refusal.offset, usPath, refusal.problem,
                                       refusal.expected);
    }
    return S_OK;
}

void QTBSchemaReader::ReadSchema(const CATXMLStrictElement& root)
{
    if (!root.Is("qtbSchema")) {
        root.Refuse("the element \"" + CATUnicodeString(root.GetTagName()) + "\"", "<qtbSchema>");
    }
    ReadSettings(root);

    // The sections refer to one another, so they are read in the order that suits the reader.
    struct Section
    {
        const char* name;
        void (QTBSchemaReader::*read)(const CATXMLStrictElement&);
        bool isNeeded;
    };
    constexpr Section SECTIONS[] = {{"attributeNames", &QTBSchemaReader::ReadAttributeNames, true},
                                    {"dataSources", &QTBSchemaReader::ReadDataSources, false},
                                    {"attributes", &QTBSchemaReader::ReadAttributes, false},
                                    {"objects", &QTBSchemaReader::ReadObjects, true},
                                    {"relations", &QTBSchemaReader::ReadRelations, false},
                                    {"session", &QTBSchemaReader::ReadSession, false},
                                    {"nodeBehaviors", &QTBSchemaReader::ReadNodeBehaviors, false}};
    for (const Section& section : SECTIONS) {
        CATXMLStrictElement found;
        root.ForEachChild([&section, &found](const CATXMLStrictElement& child) {
            if (child.Is(section.name)) {
                child.RefuseSecond(static_cast<bool>(found));
                found = child;
            }
        });
        if (found) {
            (this->*section.read)(found);
        } else if (section.isNeeded) {
            root.Refuse("the element \"qtbSchema\" has no element \"" + CATUnicodeString(section.name) + "\"",
                        "<" + CATUnicodeString(section.name) + ">");
        }
    }
    CheckReferences();
}

void QTBSchemaReader::ReadSettings(const CATXMLStrictElement& root)
{
    // The last two name the grammar of the file, for editors.
    root.CheckForm({"system", "customization", "catalog", "maxExpansionLevel", "maxDescAttrLength",
                    "showDataSourceNlsValues", "xmlns:xsi", "xsi:noNamespaceSchemaLocation"},
                   {"attributeNames", "session", "dataSources", "attributes", "objects", "relations", "nodeBehaviors"});
    m_pSchema->m_usSystem = root.GetName("system");
    for (const SystemName& name : SYSTEMS) {
        if (m_pSchema->m_usSystem == name.text) {
            m_pSchema->m_System = name.system;
        }
    }
    if (m_pSchema->m_System == QTB_PDMSYSTEM_UNKNOWN) {
        root.RefuseValue("system", CATXMLStrictElement::Quote(SYSTEMS[0].text) + " or " +
                                       CATXMLStrictElement::Quote(SYSTEMS[1].text));
    }
    m_pSchema->m_usCustomization = root.GetText("customization");
    m_pSchema->m_usCatalogName = root.GetName("catalog");
    m_pSchema->m_iMaxExpansionLevel = root.GetInteger("maxExpansionLevel", -1, -1, MAX_LEVEL);
    m_pSchema->m_iMaxDescAttrLength = root.GetInteger("maxDescAttrLength", 0, -1, MAX_LENGTH);
    m_pSchema->m_bShowDataSourceNlsValues = root.GetFlag("showDataSourceNlsValues", false) ? TRUE : FALSE;
}

void QTBSchemaReader::ReadAttributeNames(const CATXMLStrictElement& section)
{
    section.CheckForm({"class", "key", "relation", "left", "right", "leftClass", "rightClass"}, {});
    QTBSchema::AttrNames& Names = m_pSchema->m_AttrNames;
    Names.classAttr = section.GetName("class");
    Names.keyAttr = section.GetName("key");
    Names.relationAttr = section.GetName("relation");
    Names.leftAttr = section.GetName("left");
    Names.rightAttr = section.GetName("right");
    Names.leftClassAttr = section.GetName("leftClass");
    Names.rightClassAttr = section.GetName("rightClass");
}

void QTBSchemaReader::ReadSession(const CATXMLStrictElement& section)
{
    section.CheckForm({"bomPartStructure", QTBSchema::PART_CLASS, "partNumberAttr", "instanceNameAttr", "fileNameAttr"},
                      {});
    m_pSchema->m_bUseBomPartStructure = section.GetFlag("bomPartStructure", false) ? TRUE : FALSE;
    for (const QTBSchema::SessionSetting& setting : QTBSchema::SESSION_SETTINGS) {
        const CATUnicodeString usValue = section.GetText(setting.attribute);
        if (!usValue.IsEmpty()) {
            m_pSchema->m_SessionValues[setting.key] = usValue;
        }
    }
    const CATUnicodeString& usPartClass = m_pSchema->GetSessionValue(QTB_PDM_SESSION_PART_CLASS);
    if (!usPartClass.IsEmpty() && m_pSchema->m_PartClassNames.Locate(usPartClass) == 0) {
        section.RefuseValue(QTBSchema::PART_CLASS, "a class of objects with the element <part>");
    }
    // Products of a session with the BOM part structure are stored under such classes.
    if (m_pSchema->m_bUseBomPartStructure != FALSE && m_pSchema->m_PartClassNamesWithSubParts.Size() == 0) {
        section.RefuseValue("bomPartStructure", "\"false\", or a class of objects with <part subParts=\"true\">");
    }
}

void QTBSchemaReader::ReadDataSources(const CATXMLStrictElement& section)
{
    section.CheckForm({}, {"dataSource"});
    section.ForEachChild([this](const CATXMLStrictElement& element) {
        element.CheckForm({"name"}, {"value"});
        std::vector<std::unique_ptr<QTBSchemaValue>> Values;
        element.ForEachChild([&Values](const CATXMLStrictElement& value) {
            value.CheckForm({"name", "displayName"}, {});
            Values.push_back(std::make_unique<QTBSchemaValue>(value.GetName("name"), value.GetText("displayName")));
        });
        const CATUnicodeString usName = element.GetName("name");
        m_pSchema->m_DataSources.push_back(std::make_unique<QTBSchemaDataSource>(usName, std::move(Values)));
        element.RefuseSecondName(
            !m_pSchema->m_DataSourceIndex.emplace(usName, m_pSchema->m_DataSources.back().get()).second);
    });
}

void QTBSchemaReader::ReadAttributes(const CATXMLStrictElement& section)
{
    section.CheckForm({}, {"attribute"});
    section.ForEachChild([this](const CATXMLStrictElement& element) {
        element.CheckForm({"name", "nlsKey", "dataSource"}, {});
        const CATUnicodeString usName = element.GetName("name");
        const CATUnicodeString usDataSource = element.GetText("dataSource");
        if (!usDataSource.IsEmpty() && m_pSchema->FindDataSource(usDataSource) == nullptr) {
            element.RefuseValue("dataSource", "a name of the section <dataSources>");
        }
        m_pSchema->m_Attributes.push_back(
            std::make_unique<QTBSchemaAttribute>(usName, element.GetText("nlsKey"), usDataSource));
        element.RefuseSecondName(
            !m_pSchema->m_AttributeIndex.emplace(usName, m_pSchema->m_Attributes.back().get()).second);
    });
}

void QTBSchemaReader::ReadObjects(const CATXMLStrictElement& section)
{
    section.CheckForm({}, {"object"});
    section.ForEachChild([this](const CATXMLStrictElement& element) { ReadObject(element); });
    if (m_pSchema->m_Objects.empty()) {
        section.Refuse("the element \"objects\" has no element", "<object>");
    }
    FileKindNames();
    FilePartAndFileClasses();
}

void QTBSchemaReader::ReadRelations(const CATXMLStrictElement& section)
{
    section.CheckForm({}, {"relation"});
    section.ForEachChild([this](const CATXMLStrictElement& element) { ReadRelation(element); });
}

void QTBSchemaReader::ReadNodeBehaviors(const CATXMLStrictElement& section)
{
    section.CheckForm({}, {"nodeBehavior"});
    m_pSchema->m_pBehaviors = std::make_unique<QTBCatiaNodeBehaviorDefinitions>();
    section.ForEachChild([this](const CATXMLStrictElement& element) {
        element.CheckForm({"nodeType", "partNumberPrefix", "behavior"}, {});
        // Any behaviour is taken here: a product whose record has an unknown one is treated as if it had none.
        m_pSchema->m_pBehaviors->Append(std::make_unique<QTBCatiaNodeBehavior>(
            element.GetName("nodeType"), element.GetText("partNumberPrefix"), element.GetName("behavior")));
    });
}
