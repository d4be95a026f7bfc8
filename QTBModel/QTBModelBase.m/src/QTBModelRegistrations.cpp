// Every extension of the library, a row each: late type, extension class, kind of extension, interface. A row exports
// the factory of the interface objects, CreateTIE<interface><extension>, and enters it in the object modeler's
// dictionary while the library is loaded. A new extension is a row here and its includes below.

#include "CATDictionary.h"
#include "CATError.h"
#include "CATICreateInstance.h"
#include "CATMetaClass.h"
#include "QTBBndBox.h"
#include "QTBE3DGeoVisuOnBndBox.h"
#include "QTBEAliasOnBndBox.h"
#include "QTBEAliasOnRepNode.h"
#include "QTBEBndBoxOnBndBox.h"
#include "QTBECSOFilterOnRepNode.h"
#include "QTBEContainerOnRepNodeCont.h"
#include "QTBEContextualMenuOnBndBox.h"
#include "QTBEContextualMenuOnRepNode.h"
#include "QTBEContextualSubMenuOnRepNode.h"
#include "QTBECreateInstanceOnBndBox.h"
#include "QTBECreateInstanceOnInfoNode.h"
#include "QTBECreateInstanceOnNode.h"
#include "QTBECreateInstanceOnPdmNode.h"
#include "QTBECreateInstanceOnPdmNodeCont.h"
#include "QTBECreateInstanceOnPdmObjNode.h"
#include "QTBECreateInstanceOnPdmRelNode.h"
#include "QTBECreateInstanceOnRepNode.h"
#include "QTBECreateInstanceOnRepNodeCont.h"
#include "QTBECutAndPastableOnRepNode.h"
#include "QTBEDocAliasOnDocument.h"
#include "QTBEEditorOnDoc.h"
#include "QTBEInfoNodeOnInfoNode.h"
#include "QTBEInitOnDoc.h"
#include "QTBELinkToPsnOnRepNode.h"
#include "QTBELinkToQtbOnASMPRODUCT.h"
#include "QTBEModelEventsOnBndBox.h"
#include "QTBENavigModifyOnRepNode_node.h"
#include "QTBENavigateObjectOnRepNode.h"
#include "QTBENodeAttributesOnNode.h"
#include "QTBENodeOnNode.h"
#include "QTBENodeRelationsOnNode.h"
#include "QTBEPdmNodeContOnPdmNodeCont.h"
#include "QTBEPdmNodeOnPdmNode.h"
#include "QTBEPdmObjNodeOnPdmObjNode.h"
#include "QTBEPdmRelNodeOnPdmRelNode.h"
#include "QTBEPersistentOnDoc.h"
#include "QTBEPsnNodeOnASMPRODUCT.h"
#include "QTBERepNodeContOnRepNodeCont.h"
#include "QTBERepNodeOnRepNode.h"
#include "QTBERootPropertiesOnBndBox.h"
#include "QTBERootPropertiesOnRepNode.h"
#include "QTBESelectShowOnBndBox.h"
#include "QTBEUIActivateOnRepNode.h"
#include "QTBEVisPropertiesOnBndBox.h"
#include "QTBModelLibExport.h"
#include "TIECATI3DGeoVisu.h"
#include "TIECATIAlias.h"
#include "TIECATICSOFilter.h"
#include "TIECATIContainer.h"
#include "TIECATIContextualMenu.h"
#include "TIECATIContextualSubMenu.h"
#include "TIECATICutAndPastable.h"
#include "TIECATIDocAlias.h"
#include "TIECATIEditor.h"
#include "TIECATIModelEvents.h"
#include "TIECATINavigModify.h"
#include "TIECATINavigateObject.h"
#include "TIECATIPersistent.h"
#include "TIECATIRootProperties.h"
#include "TIECATISelectShow.h"
#include "TIECATIUIActivate.h"
#include "TIECATIVisProperties.h"
#include "TIECATInit.h"
#include "TIEQTBIBndBox.h"
#include "TIEQTBIInfoNode.h"
#include "TIEQTBILinkToPsn.h"
#include "TIEQTBILinkToQtb.h"
#include "TIEQTBINode.h"
#include "TIEQTBINodeAttributes.h"
#include "TIEQTBINodeRelations.h"
#include "TIEQTBIPdmNode.h"
#include "TIEQTBIPdmNodeCont.h"
#include "TIEQTBIPdmObjNode.h"
#include "TIEQTBIPdmRelNode.h"
#include "TIEQTBIPsnNode.h"
#include "TIEQTBIRepNode.h"
#include "TIEQTBIRepNodeCont.h"

// clang-format off
#define QTB_MODEL_EXTENSIONS(ROW)                                                                                      \
    ROW(ASMPRODUCT,      QTBELinkToQtbOnASMPRODUCT,       Data, QTBILinkToQtb)                                         \
    ROW(ASMPRODUCT,      QTBEPsnNodeOnASMPRODUCT,         Data, QTBIPsnNode)                                           \
    ROW(QTBBndBox,       QTBE3DGeoVisuOnBndBox,           Data, CATI3DGeoVisu)                                         \
    ROW(QTBBndBox,       QTBEAliasOnBndBox,               Data, CATIAlias)                                             \
    ROW(QTBBndBox,       QTBEBndBoxOnBndBox,              Data, QTBIBndBox)                                            \
    ROW(QTBBndBox,       QTBEContextualMenuOnBndBox,      Data, CATIContextualMenu)                                    \
    ROW(QTBBndBox,       QTBECreateInstanceOnBndBox,      Code, CATICreateInstance)                                    \
    ROW(QTBBndBox,       QTBEModelEventsOnBndBox,         Data, CATIModelEvents)                                       \
    ROW(QTBBndBox,       QTBERootPropertiesOnBndBox,      Data, CATIRootProperties)                                    \
    ROW(QTBBndBox,       QTBESelectShowOnBndBox,          Data, CATISelectShow)                                        \
    ROW(QTBBndBox,       QTBEVisPropertiesOnBndBox,       Data, CATIVisProperties)                                     \
    ROW(QTBDoc,          QTBEEditorOnDoc,                 Data, CATIEditor)                                            \
    ROW(QTBDoc,          QTBEInitOnDoc,                   Data, CATInit)                                               \
    ROW(QTBDoc,          QTBEPersistentOnDoc,             Data, CATIPersistent)                                        \
    ROW(QTBDocument,     QTBEDocAliasOnDocument,          Data, CATIDocAlias)                                          \
    ROW(QTBInfoNode,     QTBECreateInstanceOnInfoNode,    Code, CATICreateInstance)                                    \
    ROW(QTBInfoNode,     QTBEInfoNodeOnInfoNode,          Data, QTBIInfoNode)                                          \
    ROW(QTBNode,         QTBECreateInstanceOnNode,        Code, CATICreateInstance)                                    \
    ROW(QTBNode,         QTBENodeAttributesOnNode,        Data, QTBINodeAttributes)                                    \
    ROW(QTBNode,         QTBENodeOnNode,                  Data, QTBINode)                                              \
    ROW(QTBNode,         QTBENodeRelationsOnNode,         Data, QTBINodeRelations)                                     \
    ROW(QTBPdmNode,      QTBECreateInstanceOnPdmNode,     Code, CATICreateInstance)                                    \
    ROW(QTBPdmNode,      QTBEPdmNodeOnPdmNode,            Data, QTBIPdmNode)                                           \
    ROW(QTBPdmNodeCont,  QTBECreateInstanceOnPdmNodeCont, Code, CATICreateInstance)                                    \
    ROW(QTBPdmNodeCont,  QTBEPdmNodeContOnPdmNodeCont,    Data, QTBIPdmNodeCont)                                       \
    ROW(QTBPdmObjNode,   QTBECreateInstanceOnPdmObjNode,  Code, CATICreateInstance)                                    \
    ROW(QTBPdmObjNode,   QTBEPdmObjNodeOnPdmObjNode,      Data, QTBIPdmObjNode)                                        \
    ROW(QTBPdmRelNode,   QTBECreateInstanceOnPdmRelNode,  Code, CATICreateInstance)                                    \
    ROW(QTBPdmRelNode,   QTBEPdmRelNodeOnPdmRelNode,      Data, QTBIPdmRelNode)                                        \
    ROW(QTBRepNode,      QTBEAliasOnRepNode,              Code, CATIAlias)                                             \
    ROW(QTBRepNode,      QTBECSOFilterOnRepNode,          Data, CATICSOFilter)                                         \
    ROW(QTBRepNode,      QTBEContextualMenuOnRepNode,     Data, CATIContextualMenu)                                    \
    ROW(QTBRepNode,      QTBEContextualSubMenuOnRepNode,  Data, CATIContextualSubMenu)                                 \
    ROW(QTBRepNode,      QTBECreateInstanceOnRepNode,     Code, CATICreateInstance)                                    \
    ROW(QTBRepNode,      QTBECutAndPastableOnRepNode,     Data, CATICutAndPastable)                                    \
    ROW(QTBRepNode,      QTBELinkToPsnOnRepNode,          Data, QTBILinkToPsn)                                         \
    ROW(QTBRepNode,      QTBENavigateObjectOnRepNode,     Data, CATINavigateObject)                                    \
    ROW(QTBRepNode,      QTBERepNodeOnRepNode,            Data, QTBIRepNode)                                           \
    ROW(QTBRepNode,      QTBERootPropertiesOnRepNode,     Data, CATIRootProperties)                                    \
    ROW(QTBRepNode,      QTBEUIActivateOnRepNode,         Data, CATIUIActivate)                                        \
    ROW(QTBRepNodeCont,  QTBEContainerOnRepNodeCont,      Data, CATIContainer)                                         \
    ROW(QTBRepNodeCont,  QTBECreateInstanceOnRepNodeCont, Code, CATICreateInstance)                                    \
    ROW(QTBRepNodeCont,  QTBERepNodeContOnRepNodeCont,    Data, QTBIRepNodeCont)                                       \
    ROW(QTBRepNode_node, QTBENavigModifyOnRepNode_node,   Data, CATINavigModify)
// clang-format on

#define QTB_EXPORT_FACTORY(LateType, Class, Kind, Interface)                                                           \
    extern "C" QTBMODELLIB_API CATBaseUnknown* CreateTIE##Interface##Class(CATComponent* pComponent)                   \
    {                                                                                                                  \
        return CATCreateTie<TIE##Interface<CAT##Kind##Tie<Interface, Class>>>(pComponent);                             \
    }
QTB_MODEL_EXTENSIONS(QTB_EXPORT_FACTORY)

namespace {

struct Registration
{
    const char* lateType;
    const char* extension;
    CATClassKind kind;
    CATMetaClass* (*pGetInterface)();
    CATInterfaceObjectFactory factory;

    CATMetaClass* GetExtensionRecord() const
    {
        // The constant belongs to the object modeler's class macros.
        return fct_RetrieveMetaObject(extension, static_cast<int>(kind), CATBaseUnknown::MetaObject(), lateType,
                                      "External", 0);
    }
};

#define QTB_REGISTRATION(LateType, Class, Kind, Interface)                                                             \
    Registration{#LateType, #Class, CATClassKind::Kind##Extension, &Interface::MetaObject,                             \
                 &CreateTIE##Interface##Class},
const Registration REGISTRATIONS[] = {QTB_MODEL_EXTENSIONS(QTB_REGISTRATION)};

// Registers when the library is loaded, takes everything back when it is unloaded.
class ModelRegistrations
{
public:
    ModelRegistrations()
    {
        // Asked for the first time here, the keeper of past errors outlives this object.
        CATError::CATGetLastError(S_OK, NULL);
        DeclareLateTypes<QTBBndBox, QTBInfoNode, QTBNode, QTBPdmNode, QTBPdmNodeCont, QTBPdmObjNode, QTBPdmRelNode,
                         QTBRepNode, QTBRepNodeCont>();
        for (const Registration& registration : REGISTRATIONS) {
            CATFillDictionary(registration.GetExtensionRecord(), registration.pGetInterface(), registration.factory, 0,
                              1);
        }
    }
    ModelRegistrations(const ModelRegistrations&) = delete;
    ModelRegistrations& operator=(const ModelRegistrations&) = delete;
    ~ModelRegistrations()
    {
        for (const Registration& registration : REGISTRATIONS) {
            CATRemoveFromDictionary(registration.GetExtensionRecord(), registration.pGetInterface());
        }
        // Errors of the library's own class must not outlive it.
        CATError::ForgetResults();
    }

private:
    template <class... Implementation>
    static void DeclareLateTypes()
    {
        (Implementation::GetLateType(), ...);
    }
};

const ModelRegistrations g_Registrations;

} // namespace
