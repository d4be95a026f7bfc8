#pragma once

#include <memory>

#include "QTBELinkToQtbOnASMPRODUCT.h"
#include "QTBEPsnNodeOnASMPRODUCT.h"
#include "QTBFault.h"
#include "QTBProductSession.h"
#include "QTBReplacedExtension.h"
#include "TIEQTBILinkToQtb.h"
#include "TIEQTBIPsnNode.h"

// The extensions of products, made to fail on demand (see QTBFault), with the operations in reach that are not those of
// the interface. Only calls through the interface can be struck.

class QTBFaultyPsnNode : public QTBEPsnNodeOnASMPRODUCT
{
public:
    QTB_FAULTY_OPERATION(QTBEPsnNodeOnASMPRODUCT, GetFatherProduct)
    QTB_FAULTY_OPERATION(QTBEPsnNodeOnASMPRODUCT, GetDirectChildren)
    QTB_FAULTY_OPERATION(QTBEPsnNodeOnASMPRODUCT, GetDirectReferenceChildNodes)
    QTB_FAULTY_OPERATION(QTBEPsnNodeOnASMPRODUCT, GetPdmBomInfo)
    QTB_FAULTY_OPERATION(QTBEPsnNodeOnASMPRODUCT, IsCmiArchiveRoot)
    QTB_FAULTY_OPERATION(QTBEPsnNodeOnASMPRODUCT, GetPsnNodeType)
    QTB_FAULTY_OPERATION(QTBEPsnNodeOnASMPRODUCT, NeedsSpecialBehavior)

    using QTBEPsnNodeOnASMPRODUCT::CatiaFileClassStringToEnum;
    using QTBEPsnNodeOnASMPRODUCT::CompareChildInstanceInfoStrings;
    using QTBEPsnNodeOnASMPRODUCT::GetCurrentDirectChildInstanceInfoStrings;
    using QTBEPsnNodeOnASMPRODUCT::GetParentPdmPartInfo;
    using QTBEPsnNodeOnASMPRODUCT::GetPdmPartMainNode;
    using QTBEPsnNodeOnASMPRODUCT::IsPdmPartMainNode;
    using QTBEPsnNodeOnASMPRODUCT::IsUnderCmiArchiveRoot;
    using QTBEPsnNodeOnASMPRODUCT::PartNumberHasChanged;
    using QTBEPsnNodeOnASMPRODUCT::PsnDocumentIsDirty;
    using QTBEPsnNodeOnASMPRODUCT::SubNodesHaveCorrespondingPdmNodes;
};

class QTBFaultyLinkToQtb : public QTBELinkToQtbOnASMPRODUCT
{
public:
    QTB_FAULTY_OPERATION(QTBELinkToQtbOnASMPRODUCT, ProdStrucPdmNodeExists)
    QTB_FAULTY_OPERATION(QTBELinkToQtbOnASMPRODUCT, CatiaFilePdmNodeExists)
    QTB_FAULTY_OPERATION(QTBELinkToQtbOnASMPRODUCT, CorrespondingPdmNodesExist)
};

class QTBFaultyProductSession : public QTBProductSession
{
protected:
    using PsnNodeTie = TIEQTBIPsnNode<CATDataTie<QTBIPsnNode, QTBFaultyPsnNode>>;

    void SetUp() override
    {
        m_pPsnNode =
            std::make_unique<QTBReplacedExtension>("ASMPRODUCT", QTBIPsnNode::MetaObject(), &CATCreateTie<PsnNodeTie>);
        m_pLinkToQtb =
            std::make_unique<QTBReplacedExtension>("ASMPRODUCT", QTBILinkToQtb::MetaObject(),
                                                   QTBFactoryOf<TIEQTBILinkToQtb, QTBILinkToQtb, QTBFaultyLinkToQtb>());
        QTBProductSession::SetUp();
    }

    void TearDown() override
    {
        QTBProductSession::TearDown();
        m_pLinkToQtb.reset();
        m_pPsnNode.reset();
    }

    // The extension of a product, good as long as the product is held.
    static QTBFaultyPsnNode* Extension(const CATBaseUnknown_var& spProduct)
    {
        const QTBIPsnNode_var spIPsnNode(spProduct);
        return static_cast<PsnNodeTie*>(spIPsnNode.Get())->Target();
    }

private:
    std::unique_ptr<QTBReplacedExtension> m_pPsnNode;
    std::unique_ptr<QTBReplacedExtension> m_pLinkToQtb;
};
