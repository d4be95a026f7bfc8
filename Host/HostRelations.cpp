#include "HostRelations.h"

#include <fmt/format.h>

#include "HostSession.h"
#include "QTBConstants.h"
#include "QTBSchema.h"
#include "QTBSchemaRelation.h"
#include "QTBSchemaUtil.h"

namespace {

const QTBSchema& GetSchema()
{
    QTBSchema* pSchema = nullptr;
    HostSession::Require(QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema), ExitCode::Failure, "schema");
    return *pSchema;
}

bool IsKnown(const CATUnicodeString& usName)
{
    QTBSchemaRelation* pRelation = nullptr;
    return SUCCEEDED(GetSchema().GetRelationPtr(usName, &pRelation));
}

} // namespace

CATListValCATUnicodeString HostRelations::GetNames()
{
    const QTBSchema& schema = GetSchema();
    CATListValCATUnicodeString names;
    for (int i = 1; i <= schema.GetRelationCount(); ++i) {
        QTBSchemaRelation* pRelation = nullptr;
        HostSession::Require(schema.GetRelationPtr(i, &pRelation), ExitCode::Failure, "schema");
        names.Append(pRelation->GetName());
    }
    return names;
}

QTBNodeRelationInfo HostRelations::Parse(const std::string& text)
{
    // The name itself may have a colon.
    if (const CATUnicodeString usName(std::string_view{text}); IsKnown(usName)) {
        return QTBNodeRelationInfo(usName, usLEFT_TO_RIGHT);
    }
    const std::size_t colon = text.rfind(':');
    const std::string_view direction = colon == std::string::npos ? "right" : std::string_view(text).substr(colon + 1);
    if (direction != "left" && direction != "right") {
        throw HostError(ExitCode::Usage, fmt::format("relation {}: the direction is left or right", text));
    }
    const CATUnicodeString usName(std::string_view(text).substr(0, colon));
    if (!IsKnown(usName)) {
        std::string known;
        for (const CATUnicodeString& usKnown : GetNames()) {
            known += known.empty() ? "" : ", ";
            known += usKnown.View();
        }
        throw HostError(ExitCode::Usage,
                        fmt::format("the schema has no relation {}; its relations are {}", usName.View(), known));
    }
    return QTBNodeRelationInfo(usName, direction == "left" ? usRIGHT_TO_LEFT : usLEFT_TO_RIGHT);
}

CATListValQTBNodeRelationInfo HostRelations::Get(const std::vector<std::string>& texts)
{
    CATListValQTBNodeRelationInfo relations;
    for (const std::string& text : texts) {
        relations.Append(Parse(text));
    }
    if (texts.empty()) {
        for (const CATUnicodeString& usName : GetNames()) {
            relations.Append(QTBNodeRelationInfo(usName, usLEFT_TO_RIGHT));
        }
    }
    return relations;
}

CATListValQTBNodeRelationInfo HostRelations::GetToExpand(const std::vector<std::string>& texts)
{
    CATListValQTBNodeRelationInfo relations;
    for (const QTBNodeRelationInfo& relation : Get(texts)) {
        relations.InsertAt(1, relation);
    }
    return relations;
}
