#include "QTBSchemaReader.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <type_traits>
#include <unordered_set>

#include "CATIDOMDocument.h"
#include "CATXMLTextCheck.h"
#include "QTBPdmSessionUtil.h"
#include "QTBPdmTree.h"
#include "QTBXmlUtil.h"

namespace {

constexpr int MAX_LENGTH = 1000000;
constexpr int MAX_LEVEL = 1000000;

// What a class of either kind is called in messages.
constexpr const char* NAME_OF_OBJECT_CLASS = "a class of the section <objects>";
constexpr const char* NAME_OF_RELATION_CLASS = "a class of the section <relations>";

struct SystemName
{
    const char* text;
    QTBPdmSystem system;
};
constexpr SystemName SYSTEMS[] = {{"ARAS_INNOVATOR", QTB_PDMSYSTEM_ARAS_INNOVATOR},
                                  {"ENOVIA_MATRIX", QTB_PDMSYSTEM_ENOVIA_MATRIX}};

struct SessionSetting
{
    const char* attribute;
    QTBPdmSessionStringAttr key;
};
constexpr SessionSetting SESSION_SETTINGS[] = {{"partNumberAttr", QTB_PDM_SESSION_PART_NUMBER_ATTR},
                                               {"instanceNameAttr", QTB_PDM_SESSION_INSTANCE_NAME_ATTR},
                                               {"fileNameAttr", QTB_PDM_SESSION_FILE_NAME_ATTR},
                                               {"partClass", QTB_PDM_SESSION_PART_CLASS}};
constexpr const char* PART_CLASS = "partClass";

CATUnicodeString InQuotes(const CATUnicodeString& usText)
{
    return QTBSchemaXmlElement::Quote(usText.View());
}

template <class Visit>
void ForEachChild(const QTBSchemaXmlElement& element, Visit visit)
{
    for (QTBSchemaXmlElement child = element.GetFirstChild(); child; child = child.GetNextSibling()) {
        visit(child);
    }
}

// Files an element under its name, which no other element of its kind may have.
template <class Index, class Value>
void FileUnderName(const QTBSchemaXmlElement& element, const CATUnicodeString& usName, Value&& value, Index* pIndex)
{
    if (!pIndex->emplace(usName, std::forward<Value>(value)).second) {
        element.RefuseValue("name", "a name that no other <" + CATUnicodeString(element.GetTagName()) + "> here has");
    }
}

QTBSchemaAttributeRepList ReadAttributeReps(const QTBSchemaXmlElement& element)
{
    QTBSchemaAttributeRepList Reps;
    std::unordered_set<CATUnicodeString> EmbeddedNames;
    ForEachChild(element, [&Reps, &EmbeddedNames](const QTBSchemaXmlElement& rep) {
        rep.CheckForm({"name", "embeddedObject"}, {});
        const CATUnicodeString usName = rep.GetName("name");
        const CATUnicodeString usEmbeddedObjAttr = rep.GetText("embeddedObject");
        // Values of embedded objects are looked up by the attribute's name alone.
        if (!usEmbeddedObjAttr.IsEmpty() && !EmbeddedNames.insert(usName).second) {
            rep.RefuseValue("name", "a name that no other attribute of an embedded object here has");
        }
        Reps.Append(std::make_unique<QTBSchemaAttributeRep>(usName, usEmbeddedObjAttr));
    });
    return Reps;
}

// The places where a context action is offered; empty for an action that a class does not offer, unlike its parent.
CATUnicodeString ReadPlaces(const QTBSchemaXmlElement& element)
{
    const CATUnicodeString usPlaces = element.GetText("in");
    const auto known = {"", "PdmWindow", "QueryDialog", "PdmWindow QueryDialog", "QueryDialog PdmWindow"};
    if (std::none_of(known.begin(), known.end(), [&usPlaces](const char* places) { return usPlaces == places; })) {
        element.RefuseValue("in", R"("PdmWindow", "QueryDialog", "PdmWindow QueryDialog" or "")");
    }
    return usPlaces;
}

std::shared_ptr<QTBSchemaRelationship> ReadRelationship(const QTBSchemaXmlElement& element)
{
    element.CheckForm({"name", "nlsKey", "multiExpand"}, {});
    return std::make_shared<QTBSchemaRelationship>(element.GetName("name"), element.GetText("nlsKey"),
                                                   element.GetFlag("multiExpand", false) ? "true" : "false");
}

// The text of a flag that a subclass can leave to its parent; empty when it is missing.
CATUnicodeString ReadFlagText(const QTBSchemaXmlElement& element, const char* attribute)
{
    element.GetFlag(attribute, false);
    return element.GetText(attribute);
}

// Refuses an element that stands here already.
void RefuseSecond(const QTBSchemaXmlElement& element, bool isSecond)
{
    if (isSecond) {
        element.Refuse("a second element \"" + CATUnicodeString(element.GetTagName()) + "\"", "one at most");
    }
}

template <class Part>
void TakeOnce(const QTBSchemaXmlElement& element, const Part& part, Part* pTarget)
{
    RefuseSecond(element, *pTarget != nullptr);
    *pTarget = part;
}

CATUnicodeString ReadDirection(const QTBSchemaXmlElement& element)
{
    CATUnicodeString usDirection = element.GetName("direction");
    if (!(usDirection == usLEFT_TO_RIGHT) && !(usDirection == usRIGHT_TO_LEFT)) {
        element.RefuseValue("direction", InQuotes(usLEFT_TO_RIGHT) + " or " + InQuotes(usRIGHT_TO_LEFT));
    }
    return usDirection;
}

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
        reader.ReadSchema(QTBSchemaXmlElement(spIDOMElementOnRoot->GetView()));
        *ppSchema = std::move(reader.m_pSchema);
    } catch (const QTBSchemaRefusal& refusal) {
        return CATXMLTextCheck::Refuse(ReadTextAgain(usPath), refusal.offset, usPath, refusal.problem,
                                       refusal.expected);
    }
    return S_OK;
}

void QTBSchemaReader::ReadSchema(const QTBSchemaXmlElement& root)
{
    if (!root.Is("qtbSchema")) {
        root.Refuse("the element \"" + CATUnicodeString(root.GetTagName()) + "\"", "<qtbSchema>");
    }
    ReadSettings(root);

    // The sections refer to one another, so they are read in the order that suits the reader.
    struct Section
    {
        const char* name;
        void (QTBSchemaReader::*read)(const QTBSchemaXmlElement&);
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
        QTBSchemaXmlElement found;
        ForEachChild(root, [&section, &found](const QTBSchemaXmlElement& child) {
            if (child.Is(section.name)) {
                RefuseSecond(child, static_cast<bool>(found));
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

void QTBSchemaReader::ReadSettings(const QTBSchemaXmlElement& root)
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
        root.RefuseValue("system", InQuotes(SYSTEMS[0].text) + " or " + InQuotes(SYSTEMS[1].text));
    }
    m_pSchema->m_usCustomization = root.GetText("customization");
    m_pSchema->m_usCatalogName = root.GetName("catalog");
    m_pSchema->m_iMaxExpansionLevel = root.GetInteger("maxExpansionLevel", -1, -1, MAX_LEVEL);
    m_pSchema->m_iMaxDescAttrLength = root.GetInteger("maxDescAttrLength", 0, -1, MAX_LENGTH);
    m_pSchema->m_bShowDataSourceNlsValues = root.GetFlag("showDataSourceNlsValues", false) ? TRUE : FALSE;
}

void QTBSchemaReader::ReadAttributeNames(const QTBSchemaXmlElement& section)
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

void QTBSchemaReader::ReadSession(const QTBSchemaXmlElement& section)
{
    section.CheckForm({"bomPartStructure", PART_CLASS, "partNumberAttr", "instanceNameAttr", "fileNameAttr"}, {});
    m_pSchema->m_bUseBomPartStructure = section.GetFlag("bomPartStructure", false) ? TRUE : FALSE;
    for (const SessionSetting& setting : SESSION_SETTINGS) {
        const CATUnicodeString usValue = section.GetText(setting.attribute);
        if (!usValue.IsEmpty()) {
            m_pSchema->m_SessionValues[setting.key] = usValue;
        }
    }
    const CATUnicodeString& usPartClass = m_pSchema->GetSessionValue(QTB_PDM_SESSION_PART_CLASS);
    if (!usPartClass.IsEmpty() && m_pSchema->m_PartClassNames.Locate(usPartClass) == 0) {
        section.RefuseValue(PART_CLASS, "a class of objects with the element <part>");
    }
    // Products of a session with the BOM part structure are stored under such classes.
    if (m_pSchema->m_bUseBomPartStructure != FALSE && m_pSchema->m_PartClassNamesWithSubParts.Size() == 0) {
        section.RefuseValue("bomPartStructure", "\"false\", or a class of objects with <part subParts=\"true\">");
    }
}

void QTBSchemaReader::ReadDataSources(const QTBSchemaXmlElement& section)
{
    section.CheckForm({}, {"dataSource"});
    ForEachChild(section, [this](const QTBSchemaXmlElement& element) {
        element.CheckForm({"name"}, {"value"});
        std::vector<std::unique_ptr<QTBSchemaValue>> Values;
        ForEachChild(element, [&Values](const QTBSchemaXmlElement& value) {
            value.CheckForm({"name", "displayName"}, {});
            Values.push_back(std::make_unique<QTBSchemaValue>(value.GetName("name"), value.GetText("displayName")));
        });
        const CATUnicodeString usName = element.GetName("name");
        m_pSchema->m_DataSources.push_back(std::make_unique<QTBSchemaDataSource>(usName, std::move(Values)));
        FileUnderName(element, usName, m_pSchema->m_DataSources.back().get(), &m_pSchema->m_DataSourceIndex);
    });
}

void QTBSchemaReader::ReadAttributes(const QTBSchemaXmlElement& section)
{
    section.CheckForm({}, {"attribute"});
    ForEachChild(section, [this](const QTBSchemaXmlElement& element) {
        element.CheckForm({"name", "nlsKey", "dataSource"}, {});
        const CATUnicodeString usName = element.GetName("name");
        const CATUnicodeString usDataSource = element.GetText("dataSource");
        if (!usDataSource.IsEmpty() && m_pSchema->FindDataSource(usDataSource) == nullptr) {
            element.RefuseValue("dataSource", "a name of the section <dataSources>");
        }
        m_pSchema->m_Attributes.push_back(
            std::make_unique<QTBSchemaAttribute>(usName, element.GetText("nlsKey"), usDataSource));
        FileUnderName(element, usName, m_pSchema->m_Attributes.back().get(), &m_pSchema->m_AttributeIndex);
    });
}

void QTBSchemaReader::ReadObjects(const QTBSchemaXmlElement& section)
{
    section.CheckForm({}, {"object"});
    ForEachChild(section, [this](const QTBSchemaXmlElement& element) { ReadObject(element); });
    if (m_pSchema->m_Objects.empty()) {
        section.Refuse("the element \"objects\" has no element", "<object>");
    }
    FileKindNames();
    FilePartAndFileClasses();
}

void QTBSchemaReader::ReadRelations(const QTBSchemaXmlElement& section)
{
    section.CheckForm({}, {"relation"});
    ForEachChild(section, [this](const QTBSchemaXmlElement& element) { ReadRelation(element); });
}

void QTBSchemaReader::ReadNodeBehaviors(const QTBSchemaXmlElement& section)
{
    section.CheckForm({}, {"nodeBehavior"});
    m_pSchema->m_pBehaviors = std::make_unique<QTBCatiaNodeBehaviorDefinitions>();
    ForEachChild(section, [this](const QTBSchemaXmlElement& element) {
        element.CheckForm({"nodeType", "partNumberPrefix", "behavior"}, {});
        // Any behaviour is taken here: a product whose record has an unknown one is treated as if it had none.
        m_pSchema->m_pBehaviors->Append(std::make_unique<QTBCatiaNodeBehavior>(
            element.GetName("nodeType"), element.GetText("partNumberPrefix"), element.GetName("behavior")));
    });
}

void QTBSchemaReader::ReadObject(const QTBSchemaXmlElement& element)
{
    element.CheckForm({"name", "parent", "nlsKey", "icon", "tooltipAttr"},
                      {"description", "form", "contextAction", "part", "catiaFile", "partToFile", "pdmTree"});
    std::unique_ptr<QTBSchemaObject> pObject = MakeClass<QTBSchemaObject>(element, m_pSchema->m_ObjectIndex);
    std::unordered_set<CATUnicodeString> PdmTreeNames;
    ForEachChild(element, [this, &pObject, &PdmTreeNames](const QTBSchemaXmlElement& child) {
        if (ReadNodePart(child, pObject.get())) {
            return;
        }
        if (child.Is("part")) {
            RefuseSecond(child, pObject->m_bIsPart != FALSE);
            child.CheckForm({"subParts", "catPart"}, {});
            pObject->m_bIsPart = TRUE;
            pObject->m_bCanHaveSubParts = child.GetFlag("subParts", false) ? TRUE : FALSE;
            pObject->m_bCanBeCatPart = child.GetFlag("catPart", false) ? TRUE : FALSE;
        } else if (child.Is("catiaFile")) {
            RefuseSecond(child, pObject->m_CatiaFileClass != QTB_CATIA_FILE_CLASS_UNKNOWN);
            child.CheckForm({"type", "bomPart"}, {});
            pObject->m_CatiaFileClass = QTBPdmSessionUtil::GetFileClassOfDocType(child.GetName("type"));
            if (pObject->m_CatiaFileClass == QTB_CATIA_FILE_CLASS_UNKNOWN) {
                child.RefuseValue("type", "the type of a CAD document, for example " + InQuotes(usCATPART));
            }
            pObject->m_bIsBomPartFile = child.GetFlag("bomPart", false) ? TRUE : FALSE;
        } else if (child.Is("partToFile")) {
            child.CheckForm({}, {"rel"});
            TakeOnce(child, std::shared_ptr<QTBPdmTree>(ReadPdmTree(child, "")), &pObject->m_pPartToFilePdmTree);
        } else {
            child.CheckForm({"name", "nlsKey"}, {"rel"});
            const CATUnicodeString usName = child.GetName("name");
            if (!PdmTreeNames.insert(usName).second) {
                child.RefuseValue("name", "a name that no other <pdmTree> here has");
            }
            if (pObject->m_pCustomExpandPdmTrees == nullptr) {
                pObject->m_pCustomExpandPdmTrees = std::make_shared<QTBSchemaObject::PdmTrees>();
            }
            pObject->m_pCustomExpandPdmTrees->push_back(ReadPdmTree(child, usName));
        }
    });
    InheritFromParent(element, m_pSchema->m_ObjectIndex, pObject.get());
    m_pSchema->m_ObjectIndex[pObject->GetName()] = pObject.get();
    m_pSchema->m_Objects.push_back(std::move(pObject));
}

void QTBSchemaReader::ReadRelation(const QTBSchemaXmlElement& element)
{
    element.CheckForm({"name", "parent", "nlsKey", "icon", "tooltipAttr", "singleExpand", "contextCreate"},
                      {"description", "form", "contextAction", "left", "right", "leftToRight", "rightToLeft"});
    std::unique_ptr<QTBSchemaRelation> pRelation = MakeClass<QTBSchemaRelation>(element, m_pSchema->m_RelationIndex);
    pRelation->m_usSingleExpand = ReadFlagText(element, "singleExpand");
    pRelation->m_usContextCreate = ReadFlagText(element, "contextCreate");
    ForEachChild(element, [this, &pRelation](const QTBSchemaXmlElement& child) {
        if (ReadNodePart(child, pRelation.get())) {
            return;
        }
        if (child.Is("left")) {
            ReadEnd(child, &pRelation->m_LeftObjectNames);
        } else if (child.Is("right")) {
            ReadEnd(child, &pRelation->m_RightObjectNames);
        } else if (child.Is("leftToRight")) {
            TakeOnce(child, ReadRelationship(child), &pRelation->m_pLeftToRightRelationship);
        } else {
            TakeOnce(child, ReadRelationship(child), &pRelation->m_pRightToLeftRelationship);
        }
    });
    InheritFromParent(element, m_pSchema->m_RelationIndex, pRelation.get());

    const bool hasLeft = pRelation->m_LeftObjectNames.Size() > 0;
    if (!hasLeft || pRelation->m_RightObjectNames.Size() == 0) {
        element.Refuse("the relation " + InQuotes(pRelation->GetName()) + " has no " + (hasLeft ? "right" : "left") +
                           " end",
                       hasLeft ? "<right class=\"...\"/>" : "<left class=\"...\"/>");
    }
    m_pSchema->m_RelationIndex[pRelation->GetName()] = pRelation.get();
    m_pSchema->m_Relations.push_back(std::move(pRelation));
}

template <class Class, class Index>
std::unique_ptr<Class> QTBSchemaReader::MakeClass(const QTBSchemaXmlElement& element, const Index& index)
{
    const CATUnicodeString usName = element.GetName("name");
    if (m_pSchema->FindClass(usName) != nullptr) {
        element.RefuseValue("name", "a name that no other class has");
    }
    if (m_ClassLevels.size() >= MAX_CLASS_COUNT) {
        CATUnicodeString usCount;
        usCount.BuildFromNum(MAX_CLASS_COUNT);
        element.Refuse("a class too many", "at most " + usCount + " classes");
    }
    auto pClass = std::make_unique<Class>(usName, element.GetText("nlsKey"));
    pClass->m_usIconName = element.GetText("icon");
    pClass->m_usTooltipAttrName = element.GetText("tooltipAttr");
    const CATUnicodeString usParent = element.GetText("parent");
    int level = 1;
    if (!usParent.IsEmpty()) {
        const auto found = index.find(usParent);
        if (found == index.end()) {
            element.RefuseValue("parent", "a class of the same kind that stands before its subclass");
        }
        level = m_ClassLevels.at(found->second) + 1;
    }
    if (level > MAX_CLASS_LEVEL) {
        CATUnicodeString usLevel;
        usLevel.BuildFromNum(MAX_CLASS_LEVEL);
        element.RefuseValue("parent", "at most " + usLevel + " classes from the topmost to the last subclass");
    }
    m_ClassLevels[pClass.get()] = level;
    return pClass;
}

bool QTBSchemaReader::ReadNodePart(const QTBSchemaXmlElement& element, QTBSchemaNode* pNode)
{
    if (element.Is("description")) {
        element.CheckForm({}, {"attr"});
        TakeOnce(element, std::make_shared<QTBSchemaDescription>(ReadAttributeReps(element)), &pNode->m_pDescription);
        return true;
    }
    if (element.Is("form")) {
        element.CheckForm({"name"}, {"attr"});
        const CATUnicodeString usName = element.GetName("name");
        FileUnderName(element, usName, std::make_unique<QTBSchemaForm>(usName, ReadAttributeReps(element)),
                      &pNode->m_Forms);
        return true;
    }
    if (element.Is("contextAction")) {
        element.CheckForm({"name", "in"}, {});
        FileUnderName(element, element.GetName("name"), ReadPlaces(element), &pNode->m_PlacesOfContextActions);
        return true;
    }
    return false;
}

template <class Class, class Index>
void QTBSchemaReader::InheritFromParent(const QTBSchemaXmlElement& element, const Index& index, Class* pClass)
{
    const CATUnicodeString usParent = element.GetText("parent");
    if (!usParent.IsEmpty()) {
        pClass->Inherit(*index.at(usParent));
    }
}

void QTBSchemaReader::ReadEnd(const QTBSchemaXmlElement& element, CATListValCATUnicodeString* pClassNames) const
{
    element.CheckForm({"class"}, {});
    const auto found = m_KindNames.find(element.GetName("class"));
    if (found == m_KindNames.end()) {
        element.RefuseValue("class", NAME_OF_OBJECT_CLASS);
    }
    if (pClassNames->Locate(found->first) > 0) {
        element.RefuseValue("class", "a class that does not stand here already, itself or by a class above it");
    }
    if (pClassNames->Size() == 0) {
        *pClassNames = found->second;
        return;
    }
    const std::unordered_set<CATUnicodeString> Known(pClassNames->begin(), pClassNames->end());
    for (const CATUnicodeString& usName : found->second) {
        if (Known.count(usName) == 0) {
            pClassNames->Append(usName);
        }
    }
}

std::unique_ptr<QTBPdmTree> QTBSchemaReader::ReadPdmTree(const QTBSchemaXmlElement& element,
                                                         const CATUnicodeString& usName)
{
    auto pPdmTree = std::make_unique<QTBPdmTree>(usName, element.GetText("nlsKey"));
    // The children of an object level are relations, those of a relation level objects.
    struct Level
    {
        QTBSchemaXmlElement next;
        QTBPdmTreeObj* pObj;
        QTBPdmTreeRel* pRel;
    };
    std::vector<Level> Levels{{element.GetFirstChild(), nullptr, nullptr}};
    while (!Levels.empty()) {
        const Level level = Levels.back();
        if (!level.next) {
            Levels.pop_back();
            continue;
        }
        Levels.back().next = level.next.GetNextSibling();
        if (level.pRel == nullptr) {
            level.next.CheckForm({"name", "direction"}, {"obj"});
            const QTBNodeRelationInfo NodeRelationInfo(ReadReference(level.next, "name", true),
                                                       ReadDirection(level.next));
            Levels.push_back({level.next.GetFirstChild(), nullptr, pPdmTree->AddRel(level.pObj, NodeRelationInfo)});
        } else {
            level.next.CheckForm({"class"}, {"rel"});
            QTBPdmTreeObj* pObj = pPdmTree->AddObj(level.pRel, ReadReference(level.next, "class", false));
            Levels.push_back({level.next.GetFirstChild(), pObj, nullptr});
        }
    }
    return pPdmTree;
}

CATUnicodeString QTBSchemaReader::ReadReference(const QTBSchemaXmlElement& element, const char* attribute,
                                                bool isRelation)
{
    m_References.push_back({element, attribute, isRelation});
    return element.GetName(attribute);
}

void QTBSchemaReader::FileKindNames()
{
    for (const std::unique_ptr<QTBSchemaObject>& pObject : m_pSchema->m_Objects) {
        for (const QTBSchemaNode* pClass = pObject.get(); pClass != nullptr; pClass = pClass->GetParentPtr()) {
            m_KindNames[pClass->GetName()].Append(pObject->GetName());
        }
    }
}

void QTBSchemaReader::FilePartAndFileClasses()
{
    const auto appendIf = [](unsigned char bWanted, const CATUnicodeString& usName,
                             CATListValCATUnicodeString* pNames) {
        if (bWanted != FALSE) {
            pNames->Append(usName);
        }
    };
    for (const std::unique_ptr<QTBSchemaObject>& pObject : m_pSchema->m_Objects) {
        const CATUnicodeString& usName = pObject->GetName();
        appendIf(pObject->IsPart(), usName, &m_pSchema->m_PartClassNames);
        appendIf(pObject->CanHaveSubParts(), usName, &m_pSchema->m_PartClassNamesWithSubParts);
        appendIf(pObject->CanBeCatPart(), usName, &m_pSchema->m_CatPartClassNames);
        if (pObject->GetCatiaFileClass() != QTB_CATIA_FILE_CLASS_UNKNOWN) {
            const QTBBomType bomType = pObject->IsPart() != FALSE ? QTB_BOM_TYPE_PART : QTB_BOM_TYPE_AUX_FILE;
            QTBSchema::CatiaFileClassInfo& Info =
                m_pSchema->m_CatiaFileClassInfos[{pObject->GetCatiaFileClass(), bomType}];
            if (Info.pdmClasses.Size() == 0) {
                Info.bIsBomPart = pObject->IsBomPartFile();
            }
            Info.pdmClasses.Append(usName);
        }
    }
}

void QTBSchemaReader::CheckReferences() const
{
    for (const Reference& reference : m_References) {
        const CATUnicodeString usName = reference.element.GetText(reference.attribute);
        const bool isKnown = reference.isRelation ? m_pSchema->m_RelationIndex.count(usName) > 0
                                                  : m_pSchema->m_ObjectIndex.count(usName) > 0;
        if (!isKnown) {
            reference.element.RefuseValue(reference.attribute,
                                          reference.isRelation ? NAME_OF_RELATION_CLASS : NAME_OF_OBJECT_CLASS);
        }
    }
}
