#include "QTBSchemaReader.h"

#include <algorithm>
#include <unordered_set>

#include "QTBPdmSessionUtil.h"
#include "QTBPdmTree.h"

namespace {

// What a class of either kind is called in messages.
constexpr const char* NAME_OF_OBJECT_CLASS = "a class of the section <objects>";
constexpr const char* NAME_OF_RELATION_CLASS = "a class of the section <relations>";

CATUnicodeString Quote(const CATUnicodeString& usText)
{
    return CATXMLStrictElement::Quote(usText.View());
}

QTBSchemaAttributeRepList ReadAttributeReps(const CATXMLStrictElement& element)
{
    QTBSchemaAttributeRepList Reps;
    std::unordered_set<CATUnicodeString> EmbeddedNames;
    element.ForEachChild([&Reps, &EmbeddedNames](const CATXMLStrictElement& rep) {
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
CATUnicodeString ReadPlaces(const CATXMLStrictElement& element)
{
    CATUnicodeString usPlaces = element.GetText("in");
    const auto known = {"", "PdmWindow", "QueryDialog", "PdmWindow QueryDialog", "QueryDialog PdmWindow"};
    if (std::none_of(known.begin(), known.end(), [&usPlaces](const char* places) { return usPlaces == places; })) {
        element.RefuseValue("in", R"("PdmWindow", "QueryDialog", "PdmWindow QueryDialog" or "")");
    }
    return usPlaces;
}

std::shared_ptr<QTBSchemaRelationship> ReadRelationship(const CATXMLStrictElement& element)
{
    element.CheckForm({"name", "nlsKey", "multiExpand"}, {});
    return std::make_shared<QTBSchemaRelationship>(element.GetName("name"), element.GetText("nlsKey"),
                                                   element.GetFlag("multiExpand", false) ? "true" : "false");
}

// The text of a flag that a subclass can leave to its parent; empty when it is missing.
CATUnicodeString ReadFlagText(const CATXMLStrictElement& element, const char* attribute)
{
    element.GetFlag(attribute, false);
    return element.GetText(attribute);
}

template <class Part>
void TakeOnce(const CATXMLStrictElement& element, const Part& part, Part* pTarget)
{
    element.RefuseSecond(*pTarget != nullptr);
    *pTarget = part;
}

CATUnicodeString ReadDirection(const CATXMLStrictElement& element)
{
    CATUnicodeString usDirection = element.GetName("direction");
    if (!(usDirection == usLEFT_TO_RIGHT) && !(usDirection == usRIGHT_TO_LEFT)) {
        element.RefuseValue("direction", Quote(usLEFT_TO_RIGHT) + " or " + Quote(usRIGHT_TO_LEFT));
    }
    return usDirection;
}

} // namespace

void QTBSchemaReader::ReadObject(const CATXMLStrictElement& element)
{
    element.CheckForm({"name", "parent", "nlsKey", "icon", "tooltipAttr"},
                      {"description", "form", "contextAction", "part", "catiaFile", "partToFile", "pdmTree"});
    std::unique_ptr<QTBSchemaObject> pObject = MakeClass<QTBSchemaObject>(element, m_pSchema->m_ObjectIndex);
    std::unordered_set<CATUnicodeString> PdmTreeNames;
    element.ForEachChild([this, &pObject, &PdmTreeNames](const CATXMLStrictElement& child) {
        if (ReadNodePart(child, pObject.get())) {
            return;
        }
        if (child.Is("part")) {
            child.RefuseSecond(pObject->m_bIsPart != FALSE);
            child.CheckForm({"subParts", "catPart"}, {});
            pObject->m_bIsPart = TRUE;
            pObject->m_bCanHaveSubParts = child.GetFlag("subParts", false) ? TRUE : FALSE;
            pObject->m_bCanBeCatPart = child.GetFlag("catPart", false) ? TRUE : FALSE;
        } else if (child.Is("catiaFile")) {
            child.RefuseSecond(pObject->m_CatiaFileClass != QTB_CATIA_FILE_CLASS_UNKNOWN);
            child.CheckForm({"type", "bomPart"}, {});
            pObject->m_CatiaFileClass = QTBPdmSessionUtil::GetFileClassOfDocType(child.GetName("type"));
            if (pObject->m_CatiaFileClass == QTB_CATIA_FILE_CLASS_UNKNOWN) {
                child.RefuseValue("type", "the type of a CAD document, for example " + Quote(usCATPART));
            }
            pObject->m_bIsBomPartFile = child.GetFlag("bomPart", false) ? TRUE : FALSE;
        } else if (child.Is("partToFile")) {
            child.CheckForm({}, {"rel"});
            TakeOnce(child, std::shared_ptr<QTBPdmTree>(ReadPdmTree(child, "")), &pObject->m_pPartToFilePdmTree);
        } else {
            child.CheckForm({"name", "nlsKey"}, {"rel"});
            const CATUnicodeString usName = child.GetName("name");
            child.RefuseSecondName(!PdmTreeNames.insert(usName).second);
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

void QTBSchemaReader::ReadRelation(const CATXMLStrictElement& element)
{
    element.CheckForm({"name", "parent", "nlsKey", "icon", "tooltipAttr", "singleExpand", "contextCreate"},
                      {"description", "form", "contextAction", "left", "right", "leftToRight", "rightToLeft"});
    std::unique_ptr<QTBSchemaRelation> pRelation = MakeClass<QTBSchemaRelation>(element, m_pSchema->m_RelationIndex);
    pRelation->m_usSingleExpand = ReadFlagText(element, "singleExpand");
    pRelation->m_usContextCreate = ReadFlagText(element, "contextCreate");
    element.ForEachChild([this, &pRelation](const CATXMLStrictElement& child) {
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
        element.Refuse("the relation " + Quote(pRelation->GetName()) + " has no " + (hasLeft ? "right" : "left") +
                           " end",
                       hasLeft ? "<right class=\"...\"/>" : "<left class=\"...\"/>");
    }
    m_pSchema->m_RelationIndex[pRelation->GetName()] = pRelation.get();
    m_pSchema->m_Relations.push_back(std::move(pRelation));
}

template <class Class, class Index>
std::unique_ptr<Class> QTBSchemaReader::MakeClass(const CATXMLStrictElement& element, const Index& index)
{
    const CATUnicodeString usName = element.GetName("name");
    if (m_pSchema->FindClass(usName) != nullptr) {
        element.RefuseValue("name", "a name that no other class has");
    }
    // Links of these names are not those of PDM relations.
    if (usName == "PdmToRep" || usName == "RepToRep") {
        element.RefuseValue("name", "a name that the session does not use itself");
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

bool QTBSchemaReader::ReadNodePart(const CATXMLStrictElement& element, QTBSchemaNode* pNode)
{
    if (element.Is("description")) {
        element.CheckForm({}, {"attr"});
        TakeOnce(element, std::make_shared<QTBSchemaDescription>(ReadAttributeReps(element)), &pNode->m_pDescription);
        return true;
    }
    if (element.Is("form")) {
        element.CheckForm({"name"}, {"attr"});
        const CATUnicodeString usName = element.GetName("name");
        auto pForm = std::make_unique<QTBSchemaForm>(usName, ReadAttributeReps(element));
        element.RefuseSecondName(!pNode->m_Forms.emplace(usName, std::move(pForm)).second);
        return true;
    }
    if (element.Is("contextAction")) {
        element.CheckForm({"name", "in"}, {});
        const CATUnicodeString usName = element.GetName("name");
        element.RefuseSecondName(!pNode->m_PlacesOfContextActions.emplace(usName, ReadPlaces(element)).second);
        return true;
    }
    return false;
}

template <class Class, class Index>
void QTBSchemaReader::InheritFromParent(const CATXMLStrictElement& element, const Index& index, Class* pClass)
{
    const CATUnicodeString usParent = element.GetText("parent");
    if (!usParent.IsEmpty()) {
        pClass->Inherit(*index.at(usParent));
    }
}

void QTBSchemaReader::ReadEnd(const CATXMLStrictElement& element, CATListValCATUnicodeString* pClassNames) const
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

std::unique_ptr<QTBPdmTree> QTBSchemaReader::ReadPdmTree(const CATXMLStrictElement& element,
                                                         const CATUnicodeString& usName)
{
    auto pPdmTree = std::make_unique<QTBPdmTree>(usName, element.GetText("nlsKey"));
    // The children of an object level are relations, those of a relation level objects.
    struct Level
    {
        CATXMLStrictElement next;
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

CATUnicodeString QTBSchemaReader::ReadReference(const CATXMLStrictElement& element, const char* attribute,
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
