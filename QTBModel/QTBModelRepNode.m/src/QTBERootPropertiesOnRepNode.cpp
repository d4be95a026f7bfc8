#include "QTBERootPropertiesOnRepNode.h"

#include "QTBCheck.h"
#include "QTBIPdmNode.h"
#include "QTBIRepNode.h"
#include "QTBSchemaNode.h"

namespace {

// A form of a PDM class and the editor that shows it, in the order of the editors.
struct EditorOfForm
{
    const char* form;
    const char* editor;
};
constexpr EditorOfForm EDITORS[] = {{"Properties", "QTBPropertyEditor"}, {"UpdateItem", "QTBUpdateItemEditor"}};

} // namespace

CATListValCATString QTBERootPropertiesOnRepNode::GetListOfEditors()
{
    QTB_SCOPE("QTBERootPropertiesOnRepNode::GetListOfEditors");
    CATListValCATString editors;
    try {
        CollectEditors(&editors);
    } catch (const CATXHException& exception) {
        QTB_TRACE("QTBERootPropertiesOnRepNode::GetListOfEditors -> caught exception:"
                  << exception.GetError()->GetNLSMessage());
    }
    return editors;
}

void QTBERootPropertiesOnRepNode::CollectEditors(CATListValCATString* pEditors)
{
    const QTBIRepNode_var spIRepNodeOnThis(this);
    QTB_RAISE_INTERFACE(spIRepNodeOnThis);
    QTBIPdmNode_var spIPdmNodeOnThis;
    QTB_RAISE_CALL(spIRepNodeOnThis->GetPdmNode, &spIPdmNodeOnThis, FALSE, NULL);
    QTBSchemaNode* pSchemaNode = NULL;
    QTB_RAISE_CALL(spIPdmNodeOnThis->GetSchemaNodePtr, &pSchemaNode);
    if (pSchemaNode == NULL) {
        return;
    }
    for (const EditorOfForm& editorOfForm : EDITORS) {
        QTBSchemaForm* pForm = NULL;
        if (SUCCEEDED(pSchemaNode->GetFormPtr(editorOfForm.form, &pForm))) {
            pEditors->Append(editorOfForm.editor);
        }
    }
}
