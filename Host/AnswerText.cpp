#include "AnswerText.h"

#include <unordered_set>

#include <fmt/format.h>

#include "HostSession.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmNode.h"
#include "QTBSchema.h"
#include "QTBSchemaUtil.h"

namespace {

template <class Receiver>
void ForEach(const CATIDOMDocument_var& spAnswer, std::string_view tag, Receiver receive)
{
    CATIDOMElement_var spRoot;
    HostSession::Require(spAnswer->GetDocumentElement(&spRoot), ExitCode::Failure, "answer");
    const CATDOMElementView root = spRoot->GetView();
    for (CATDOMElementView element = root.GetFirstChild(); element; element = element.GetNextBelow(root)) {
        if (element.HasTagName(tag)) {
            receive(element);
        }
    }
}

CATUnicodeString GetAttribute(const CATDOMElementView& item, const CATUnicodeString& usName)
{
    for (CATDOMElementView child = item.GetFirstChild(); child; child = child.GetNextSibling()) {
        const CATDOMAttributeView name = child.FindAttribute("name");
        if (name && name.GetValue() == usName.View()) {
            return child.GetText();
        }
    }
    return CATUnicodeString();
}

// An item without class is not asked for one.
bool HasKnownClass(const CATDOMElementView& item, const QTBSchema& schema)
{
    const CATUnicodeString usClass = GetAttribute(item, schema.GetClassAttr());
    if (usClass.IsEmpty() || schema.FindClass(usClass) != nullptr) {
        return true;
    }
    for (CATDOMElementView child = item.GetFirstChild(); child; child = child.GetNextSibling()) {
        const CATDOMAttributeView name = child.FindAttribute("name");
        if (name && name.GetValue() == "QtbInfo") {
            return schema.FindClass(GetAttribute(child, "QtbRelevantBaseClass")) != nullptr;
        }
    }
    return false;
}

std::unordered_set<CATUnicodeString> GetKeys(const CATListValCATBaseUnknown_var& pdmNodes)
{
    std::unordered_set<CATUnicodeString> keys;
    for (const CATBaseUnknown_var& spPdmNode : pdmNodes) {
        keys.insert(QTBIPdmNode_var(spPdmNode)->GetPdmKey());
    }
    return keys;
}

} // namespace

std::string AnswerText::DescribeObjects(const CATListValCATBaseUnknown_var& pdmObjects)
{
    std::string text;
    for (const CATBaseUnknown_var& spObject : pdmObjects) {
        const QTBIPdmNode_var spIPdmNode(spObject);
        CATUnicodeString usDescription;
        HostSession::Require(spIPdmNode->GetDescriptionString(&usDescription), ExitCode::Failure, "PDM graph");
        text +=
            fmt::format("{}: {}{}\n", spIPdmNode->GetPdmKey().View(), usDescription.View(), DescribeState(spObject));
    }
    return text;
}

std::string AnswerText::DescribeRelations(const CATIDOMDocument_var& spAnswer)
{
    QTBSchema* pSchema = nullptr;
    HostSession::Require(QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema), ExitCode::Failure, "schema");
    std::string text;
    ForEach(spAnswer, "r", [pSchema, &text](const CATDOMElementView& item) {
        text += fmt::format("{}: {} -> {}\n", GetAttribute(item, pSchema->GetKeyAttr()).View(),
                            GetAttribute(item, pSchema->GetLeftRelationshipAttr()).View(),
                            GetAttribute(item, pSchema->GetRightRelationshipAttr()).View());
    });
    return text;
}

int AnswerText::CountRelations(const CATIDOMDocument_var& spAnswer)
{
    int count = 0;
    ForEach(spAnswer, "r", [&count](const CATDOMElementView&) { ++count; });
    return count;
}

std::string AnswerText::DescribeDeleted(const CATIDOMDocument_var& spAnswer)
{
    std::string text;
    for (const char* tag : {"objectToDelete", "relationToDelete"}) {
        ForEach(spAnswer, tag, [&text](const CATDOMElementView& element) {
            text += fmt::format("{}: deleted\n", element.GetText().View());
        });
    }
    return text;
}

AnswerText::LeftOut::LeftOut(const CATIDOMDocument_var& spAnswer)
{
    QTBSchema* pSchema = nullptr;
    HostSession::Require(QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema), ExitCode::Failure, "schema");
    CATIDOMElement_var spRoot;
    HostSession::Require(spAnswer->GetDocumentElement(&spRoot), ExitCode::Failure, "answer");
    const auto readObjects = [this, pSchema](const CATDOMElementView& parent) {
        for (CATDOMElementView item = parent.GetFirstChild(); item; item = item.GetNextSibling()) {
            if (item.HasTagName("o")) {
                IsReadable(item, *pSchema);
            }
        }
    };
    for (CATDOMElementView child = spRoot->GetView().GetFirstChild(); child; child = child.GetNextSibling()) {
        const CATDOMAttributeView name = child.FindAttribute("name");
        if (!child.HasTagName("function")) {
            continue;
        }
        if (!name || name.GetValue() != "dynamicInvoke") {
            readObjects(child);
            continue;
        }
        for (CATDOMElementView arg = child.GetFirstChild(); arg; arg = arg.GetNextBelow(child)) {
            if (arg.HasTagName("arg")) {
                readObjects(arg);
            }
        }
    }
    ForEach(spAnswer, "r", [this, pSchema](const CATDOMElementView& item) {
        if (IsReadable(item, *pSchema)) {
            m_Relations.push_back(GetAttribute(item, pSchema->GetKeyAttr()));
        }
    });
}

std::string AnswerText::LeftOut::Describe(const CATListValCATBaseUnknown_var& relationsRead)
{
    if (m_Relations.size() != static_cast<std::size_t>(relationsRead.Size())) {
        // A relation that stands in the answer twice is read twice and linked once.
        const std::unordered_set<CATUnicodeString> linked = GetKeys(relationsRead);
        for (const CATUnicodeString& usKey : m_Relations) {
            if (!linked.contains(usKey)) {
                Add("an object of the relation is missing", usKey);
            }
        }
    }
    m_Relations.clear();
    std::string text;
    for (const auto& [reason, group] : m_Groups) {
        const std::string more = group.named == 0            ? fmt::format("{}", group.count)
                                 : group.count > group.named ? fmt::format(" and {} more", group.count - group.named)
                                                             : "";
        text += fmt::format("{}{} ({}{})", text.empty() ? "" : "; ", reason, group.keys, more);
    }
    return m_Count == 0 ? "" : fmt::format("{} {} left out: {}", m_Count, m_Count == 1 ? "item" : "items", text);
}

// Whether the graph takes the item for what it says of itself.
bool AnswerText::LeftOut::IsReadable(const CATDOMElementView& item, const QTBSchema& schema)
{
    const CATUnicodeString usKey = GetAttribute(item, schema.GetKeyAttr());
    if (!HasKnownClass(item, schema)) {
        Add("the schema does not know the class", usKey);
        return false;
    }
    if (usKey.IsEmpty()) {
        Add("no key", usKey);
        return false;
    }
    return true;
}

void AnswerText::LeftOut::Add(const char* reason, const CATUnicodeString& usKey)
{
    Group& group = m_Groups[reason];
    ++m_Count;
    if (++group.count <= MAX_NAMED && !usKey.IsEmpty()) {
        group.keys += (group.keys.empty() ? "" : ", ") + std::string(usKey.View());
        ++group.named;
    }
}

std::string AnswerText::DescribeState(const CATBaseUnknown_var& spPdmObject)
{
    CATUnicodeString usState;
    CATUnicodeString usVersion;
    unsigned char bHasState = FALSE;
    const QTBINodeAttributes_var spINodeAttributes(spPdmObject);
    if (FAILED(spINodeAttributes->AttributeIsDefined("State", &bHasState)) || bHasState == FALSE ||
        FAILED(spINodeAttributes->GetStringAttributeValue("State", &usState, FALSE, TRUE)) ||
        FAILED(QTBIPdmNode_var(spPdmObject)->GetQtbInfoAttr("QtbVersion", &usVersion, FALSE, nullptr, TRUE))) {
        return std::string();
    }
    return fmt::format(", version {}, {}", usVersion.View(), usState.View());
}
