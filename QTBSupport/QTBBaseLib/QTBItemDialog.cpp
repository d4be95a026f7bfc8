#include "QTBItemDialog.h"

#include <string>
#include <utility>

#include "CATXMLWriter.h"
#include "QTBSchemaAttribute.h"
#include "QTBSchemaNode.h"
#include "QTBSchemaUtil.h"

namespace {

QTBItemDialog::Handler& TheHandler()
{
    static QTBItemDialog::Handler s_Handler;
    return s_Handler;
}

} // namespace

void QTBItemDialog::SetHandler(Handler handler)
{
    TheHandler() = std::move(handler);
}

bool QTBItemDialog::Ask(std::vector<Page>* pPages)
{
    return TheHandler() != nullptr && TheHandler()(pPages);
}

QTBItemDialog::Page QTBItemDialog::MakePage(const QTBSchemaNode& schemaNode, const CATUnicodeString& usFormName)
{
    Page page;
    QTBSchemaUtil::GetNlsClassName(&schemaNode, &page.usTitle);
    QTBSchemaForm* pForm = nullptr;
    if (FAILED(schemaNode.GetFormPtr(usFormName, &pForm))) {
        return page;
    }
    for (int i = 1; i <= pForm->GetFormAttrCount(); ++i) {
        QTBSchemaAttributeRep* pFormAttr = nullptr;
        pForm->GetFormAttrPtr(i, &pFormAttr);
        if (pFormAttr->GetEmbeddedObjAttr().IsEmpty()) {
            page.fields.push_back({pFormAttr->GetName(), GetDisplayName(pFormAttr->GetName()), CATUnicodeString()});
        }
    }
    return page;
}

CATUnicodeString QTBItemDialog::GetDisplayName(const CATUnicodeString& usAttrName)
{
    QTBSchemaAttribute* pAttribute = nullptr;
    CATUnicodeString usDisplayName;
    if (SUCCEEDED(QTBSchemaUtil::GetAttributePtr(usAttrName, &pAttribute, FALSE)) &&
        !pAttribute->GetNlsKey().IsEmpty()) {
        usDisplayName = QTBSchemaUtil::GetCurrentSchemaNlsString(pAttribute->GetNlsKey());
    }
    return usDisplayName.IsEmpty() ? usAttrName : usDisplayName;
}

CATUnicodeString QTBItemDialog::MakeXml(const std::vector<Field>& fields)
{
    std::string xml;
    for (const Field& field : fields) {
        xml += "<a";
        CATXMLWriter::AppendAttribute("name", field.usAttrName.View(), &xml);
        xml += ">";
        CATXMLWriter::AppendText(field.usValue.View(), &xml);
        xml += "</a>";
    }
    return CATUnicodeString(std::string_view{xml});
}
