#pragma once

#include <string_view>

// A late type of the library that can be made by name, and its base.
struct QTBModelLateType
{
    const char* name;
    const char* base;
};

// Every late type of the library that can be made by name.
inline constexpr QTBModelLateType QTB_MODEL_LATE_TYPES[] = {
    {"QTBNode", "CATBaseUnknown"},
    {"QTBPdmNode", "QTBNode"},
    {"QTBPdmObjNode", "QTBPdmNode"},
    {"QTBPdmRelNode", "QTBPdmNode"},
    {"QTBRepNode", "QTBNode"},
    {"QTBInfoNode", "QTBNode"},
    {"QTBPdmNodeCont", "CATBaseUnknown"},
    {"QTBRepNodeCont", "CATBaseUnknown"},
    {"QTBBndBox", "CATBaseUnknown"},
};

// An extension of the library: the late type that it extends and the interface that it implements there.
struct QTBModelExtension
{
    const char* lateType;
    const char* extension;
    const char* interface;

    // The others are data extensions.
    constexpr bool IsCodeExtension() const
    {
        const std::string_view name(extension);
        return name.starts_with("QTBECreateInstanceOn") || name == "QTBEAliasOnRepNode";
    }
};

// Every extension of the library.
inline constexpr QTBModelExtension QTB_MODEL_EXTENSIONS[] = {
    {"ASMPRODUCT", "QTBELinkToQtbOnASMPRODUCT", "QTBILinkToQtb"},
    {"ASMPRODUCT", "QTBEPsnNodeOnASMPRODUCT", "QTBIPsnNode"},
    {"QTBBndBox", "QTBE3DGeoVisuOnBndBox", "CATI3DGeoVisu"},
    {"QTBBndBox", "QTBEAliasOnBndBox", "CATIAlias"},
    {"QTBBndBox", "QTBEBndBoxOnBndBox", "QTBIBndBox"},
    {"QTBBndBox", "QTBEContextualMenuOnBndBox", "CATIContextualMenu"},
    {"QTBBndBox", "QTBECreateInstanceOnBndBox", "CATICreateInstance"},
    {"QTBBndBox", "QTBEModelEventsOnBndBox", "CATIModelEvents"},
    {"QTBBndBox", "QTBERootPropertiesOnBndBox", "CATIRootProperties"},
    {"QTBBndBox", "QTBESelectShowOnBndBox", "CATISelectShow"},
    {"QTBBndBox", "QTBEVisPropertiesOnBndBox", "CATIVisProperties"},
    {"QTBDoc", "QTBEEditorOnDoc", "CATIEditor"},
    {"QTBDoc", "QTBEInitOnDoc", "CATInit"},
    {"QTBDoc", "QTBEPersistentOnDoc", "CATIPersistent"},
    {"QTBDocument", "QTBEDocAliasOnDocument", "CATIDocAlias"},
    {"QTBInfoNode", "QTBECreateInstanceOnInfoNode", "CATICreateInstance"},
    {"QTBInfoNode", "QTBEInfoNodeOnInfoNode", "QTBIInfoNode"},
    {"QTBNode", "QTBECreateInstanceOnNode", "CATICreateInstance"},
    {"QTBNode", "QTBENodeAttributesOnNode", "QTBINodeAttributes"},
    {"QTBNode", "QTBENodeOnNode", "QTBINode"},
    {"QTBNode", "QTBENodeRelationsOnNode", "QTBINodeRelations"},
    {"QTBPdmNode", "QTBECreateInstanceOnPdmNode", "CATICreateInstance"},
    {"QTBPdmNode", "QTBEPdmNodeOnPdmNode", "QTBIPdmNode"},
    {"QTBPdmNodeCont", "QTBECreateInstanceOnPdmNodeCont", "CATICreateInstance"},
    {"QTBPdmNodeCont", "QTBEPdmNodeContOnPdmNodeCont", "QTBIPdmNodeCont"},
    {"QTBPdmObjNode", "QTBECreateInstanceOnPdmObjNode", "CATICreateInstance"},
    {"QTBPdmObjNode", "QTBEPdmObjNodeOnPdmObjNode", "QTBIPdmObjNode"},
    {"QTBPdmRelNode", "QTBECreateInstanceOnPdmRelNode", "CATICreateInstance"},
    {"QTBPdmRelNode", "QTBEPdmRelNodeOnPdmRelNode", "QTBIPdmRelNode"},
    {"QTBRepNode", "QTBEAliasOnRepNode", "CATIAlias"},
    {"QTBRepNode", "QTBECSOFilterOnRepNode", "CATICSOFilter"},
    {"QTBRepNode", "QTBEContextualMenuOnRepNode", "CATIContextualMenu"},
    {"QTBRepNode", "QTBEContextualSubMenuOnRepNode", "CATIContextualSubMenu"},
    {"QTBRepNode", "QTBECreateInstanceOnRepNode", "CATICreateInstance"},
    {"QTBRepNode", "QTBECutAndPastableOnRepNode", "CATICutAndPastable"},
    {"QTBRepNode", "QTBELinkToPsnOnRepNode", "QTBILinkToPsn"},
    {"QTBRepNode_node", "QTBENavigModifyOnRepNode_node", "CATINavigModify"},
    {"QTBRepNode", "QTBENavigateObjectOnRepNode", "CATINavigateObject"},
    {"QTBRepNode", "QTBERepNodeOnRepNode", "QTBIRepNode"},
    {"QTBRepNode", "QTBERootPropertiesOnRepNode", "CATIRootProperties"},
    {"QTBRepNode", "QTBEUIActivateOnRepNode", "CATIUIActivate"},
    {"QTBRepNodeCont", "QTBEContainerOnRepNodeCont", "CATIContainer"},
    {"QTBRepNodeCont", "QTBECreateInstanceOnRepNodeCont", "CATICreateInstance"},
    {"QTBRepNodeCont", "QTBERepNodeContOnRepNodeCont", "QTBIRepNodeCont"},
};
