#pragma once

#include <list>

#include "QTBELinkToPsnOnRepNode.h"
#include "QTBENodeAttributesOnNode.h"
#include "QTBENodeRelationsOnNode.h"
#include "QTBEPdmNodeContOnPdmNodeCont.h"
#include "QTBEPdmNodeOnPdmNode.h"
#include "QTBEPdmObjNodeOnPdmObjNode.h"
#include "QTBEPdmRelNodeOnPdmRelNode.h"
#include "QTBERepNodeContOnRepNodeCont.h"
#include "QTBERepNodeOnRepNode.h"
#include "QTBFault.h"
#include "QTBReplacedExtension.h"
#include "TIEQTBILinkToPsn.h"
#include "TIEQTBINodeAttributes.h"
#include "TIEQTBINodeRelations.h"
#include "TIEQTBIPdmNode.h"
#include "TIEQTBIPdmNodeCont.h"
#include "TIEQTBIPdmObjNode.h"
#include "TIEQTBIPdmRelNode.h"
#include "TIEQTBIRepNode.h"
#include "TIEQTBIRepNodeCont.h"

// The extensions of nodes and containers with the operations that the rep trees use of one another, made to fail on
// demand (see QTBFault). Only calls through the interfaces can be struck, not those within an extension.

class QTBFaultyAttributes : public QTBENodeAttributesOnNode
{
public:
    QTB_FAULTY_OPERATION(QTBENodeAttributesOnNode, GetKey)
    QTB_FAULTY_OPERATION(QTBENodeAttributesOnNode, SetKey)
    QTB_FAULTY_OPERATION(QTBENodeAttributesOnNode, SetXmlElement)
    QTB_FAULTY_OPERATION(QTBENodeAttributesOnNode, GetXmlElement)
    QTB_FAULTY_OPERATION(QTBENodeAttributesOnNode, AttributeIsDefined)
    QTB_FAULTY_OPERATION(QTBENodeAttributesOnNode, GetAttribute)
    QTB_FAULTY_OPERATION(QTBENodeAttributesOnNode, GetAttributeDataType)
    QTB_FAULTY_OPERATION(QTBENodeAttributesOnNode, GetStringAttributeValue)
    QTB_FAULTY_OPERATION(QTBENodeAttributesOnNode, GetNameValueListAttributes)
};

class QTBFaultyRelations : public QTBENodeRelationsOnNode
{
public:
    QTB_FAULTY_OPERATION(QTBENodeRelationsOnNode, AddRightNode)
    QTB_FAULTY_OPERATION(QTBENodeRelationsOnNode, GetLeftNodeList)
    QTB_FAULTY_OPERATION(QTBENodeRelationsOnNode, GetRightNodeList)
    QTB_FAULTY_OPERATION(QTBENodeRelationsOnNode, RemoveAllRels)
    QTB_FAULTY_OPERATION(QTBENodeRelationsOnNode, GetFirstNodeOfEachRightPdmRelation)
    QTB_FAULTY_OPERATION(QTBENodeRelationsOnNode, GetFirstNodeOfEachLeftPdmRelation)
};

class QTBFaultyPdmNode : public QTBEPdmNodeOnPdmNode
{
public:
    QTB_FAULTY_OPERATION(QTBEPdmNodeOnPdmNode, GetRepNodes)
    QTB_FAULTY_OPERATION(QTBEPdmNodeOnPdmNode, PreselectRepNodes)
    QTB_FAULTY_OPERATION(QTBEPdmNodeOnPdmNode, GetClassName)
    QTB_FAULTY_OPERATION(QTBEPdmNodeOnPdmNode, GetDescriptionString)
    QTB_FAULTY_OPERATION(QTBEPdmNodeOnPdmNode, GetSchemaNodePtr)
    QTB_FAULTY_OPERATION(QTBEPdmNodeOnPdmNode, IsAffectedByCurrentAction)
};

class QTBFaultyPdmObjNode : public QTBEPdmObjNodeOnPdmObjNode
{
public:
    QTB_FAULTY_OPERATION(QTBEPdmObjNodeOnPdmObjNode, GetClassAttr)
    QTB_FAULTY_OPERATION(QTBEPdmObjNodeOnPdmObjNode, GetRightNodes)
    QTB_FAULTY_OPERATION(QTBEPdmObjNodeOnPdmObjNode, GetLeftNodes)
    QTB_FAULTY_OPERATION(QTBEPdmObjNodeOnPdmObjNode, IsPdmRootNode)
    QTB_FAULTY_OPERATION(QTBEPdmObjNodeOnPdmObjNode, GetSchemaObjectPtr)
};

class QTBFaultyPdmRelNode : public QTBEPdmRelNodeOnPdmRelNode
{
public:
    QTB_FAULTY_OPERATION(QTBEPdmRelNodeOnPdmRelNode, GetLeftObject)
    QTB_FAULTY_OPERATION(QTBEPdmRelNodeOnPdmRelNode, GetRightObject)
    QTB_FAULTY_OPERATION(QTBEPdmRelNodeOnPdmRelNode, IsA)
    QTB_FAULTY_OPERATION(QTBEPdmRelNodeOnPdmRelNode, GetSchemaRelationPtr)
};

class QTBFaultyPdmNodeCont : public QTBEPdmNodeContOnPdmNodeCont
{
public:
    QTB_FAULTY_OPERATION(QTBEPdmNodeContOnPdmNodeCont, GetPdmRootNodes)
    QTB_FAULTY_OPERATION(QTBEPdmNodeContOnPdmNodeCont, GetPdmNodeByKey)
    QTB_FAULTY_OPERATION(QTBEPdmNodeContOnPdmNodeCont, CreateRelationInPdmGraph)
    QTB_FAULTY_OPERATION(QTBEPdmNodeContOnPdmNodeCont, AddRepNodeContainer)
    QTB_FAULTY_OPERATION(QTBEPdmNodeContOnPdmNodeCont, RemoveRepNodeContainer)
    QTB_FAULTY_OPERATION(QTBEPdmNodeContOnPdmNodeCont, CreateDefaultRootNode)
};

class QTBFaultyRepNode : public QTBERepNodeOnRepNode
{
public:
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, IsRepRootNode)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, GetDirectChildren)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, GetParent)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, InitContextMenuInfo)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, IsRepDefaultNode)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, Redraw)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, GetDisplayString)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, GetPdmNode)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, GetPdmNodeKey)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, RepresentsPdmObjNode)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, RepresentsPdmRelNode)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, AddPdmRelationToBeDisplayed)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, RemovePdmRelationToBeDisplayed)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, GetPdmRelationsToBeDisplayed)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, SetMarkForRemoval)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, GetMarkForRemoval)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, SetSinglePdmRelationToBeDisplayed)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, GetSinglePdmRelationToBeDisplayed)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, CheckPdmRelationToBeDisplayed)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, SetPdmRelationToLeftNode)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, GetPdmRelationToLeftNode)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, SetFrmWindowPtr)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, SetRepNodeContainer)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, GetRepNodeContainer)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, AddDebugInfoString)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, GetPdmNodeActionIndex)
    QTB_FAULTY_OPERATION(QTBERepNodeOnRepNode, PdmNodeIsIsAffectedByCurrentAction)
};

class QTBFaultyRepNodeCont : public QTBERepNodeContOnRepNodeCont
{
public:
    QTB_FAULTY_OPERATION(QTBERepNodeContOnRepNodeCont, GetRepRootNodes)
    QTB_FAULTY_OPERATION(QTBERepNodeContOnRepNodeCont, GetRepNodeByKey)
    QTB_FAULTY_OPERATION(QTBERepNodeContOnRepNodeCont, RecursiveRemoveRepTree)
    QTB_FAULTY_OPERATION(QTBERepNodeContOnRepNodeCont, GetId)
    QTB_FAULTY_OPERATION(QTBERepNodeContOnRepNodeCont, CreateDefaultRootNode)

    // Files a component that a container would not file itself.
    void File(const CATBaseUnknown_var& spComponent) { FileNode(spComponent); }
};

class QTBFaultyLinkToPsn : public QTBELinkToPsnOnRepNode
{
public:
    QTB_FAULTY_OPERATION(QTBELinkToPsnOnRepNode, CorrespondingPsnNodesExist)
    QTB_FAULTY_OPERATION(QTBELinkToPsnOnRepNode, CorrespondingPsnNodeExists)
};

// Puts the faulty extensions in the place of the real ones while it lives.
class QTBFaultyExtensions
{
public:
    QTBFaultyExtensions()
    {
        Replace<TIEQTBINodeAttributes, QTBINodeAttributes, QTBFaultyAttributes>("QTBNode");
        Replace<TIEQTBINodeRelations, QTBINodeRelations, QTBFaultyRelations>("QTBNode");
        Replace<TIEQTBIPdmNode, QTBIPdmNode, QTBFaultyPdmNode>("QTBPdmNode");
        Replace<TIEQTBIPdmObjNode, QTBIPdmObjNode, QTBFaultyPdmObjNode>("QTBPdmObjNode");
        Replace<TIEQTBIPdmRelNode, QTBIPdmRelNode, QTBFaultyPdmRelNode>("QTBPdmRelNode");
        Replace<TIEQTBIPdmNodeCont, QTBIPdmNodeCont, QTBFaultyPdmNodeCont>("QTBPdmNodeCont");
        Replace<TIEQTBIRepNode, QTBIRepNode, QTBFaultyRepNode>("QTBRepNode");
        Replace<TIEQTBIRepNodeCont, QTBIRepNodeCont, QTBFaultyRepNodeCont>("QTBRepNodeCont");
        Replace<TIEQTBILinkToPsn, QTBILinkToPsn, QTBFaultyLinkToPsn>("QTBRepNode");
    }

private:
    template <template <class...> class Tie, class Interface, class Extension>
    void Replace(const char* lateType)
    {
        m_Replaced.emplace_back(lateType, Interface::MetaObject(), QTBFactoryOf<Tie, Interface, Extension>());
    }

    std::list<QTBReplacedExtension> m_Replaced;
};
