#include "AnswerText.h"

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
