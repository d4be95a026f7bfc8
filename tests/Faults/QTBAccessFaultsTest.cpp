#include <gmock/gmock.h>

#include "CATDocument.h"
#include "CATIDOMDocument.h"
#include "CATIDOMElement.h"
#include "QTBFaultSession.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBIPsnNode.h"
#include "QTBMatchers.h"
#include "QTBPdmMessage.h"
#include "QTBXmlUtil.h"

namespace {

// The operations that read and write what a component holds. Many of them make no call that could go wrong.
class AccessFaults : public QTBFaultSession
{
protected:
    CATUnicodeString m_usText;
    CATListValCATUnicodeString m_Texts;
    CATListValCATBaseUnknown_var m_Nodes;
    unsigned char m_bFlag = FALSE;
    unsigned char m_bYes = TRUE;
    unsigned char m_bNo = FALSE;
    int m_Number = 0;
    CATBaseUnknown_var m_spNode;
    QTBIRepNode_var m_spRepNode;
    QTBNodeRelationInfo m_Info;

    void Forget() override
    {
        m_Nodes.RemoveAll();
        m_spNode = NULL_var;
        m_spRepNode = NULL_var;
    }

    static CATBaseUnknown_var ReadElement(const char* xml)
    {
        CATIDOMDocument_var spDocument;
        EXPECT_THAT(QTBXmlUtil::GetDomDocument(xml, &spDocument), Succeeds());
        CATIDOMElement_var spElement;
        EXPECT_THAT(spDocument->GetDocumentElement(&spElement), Succeeds());
        return spElement;
    }
};

TEST_F(AccessFaults, OfAttributesEndInFailures)
{
    using Node = QTBINodeAttributes;
    Run(On<Node>("A", "GetHashKey", [](Node& node) { return node.GetHashKey() != nullptr ? S_OK : E_FAIL; }));
    Run(On<Node>("A", "GetKey", [&](Node& node) { return node.GetKey(&m_usText); }));
    Run(On<Node>("info", "SetKey", [](Node& node) { return node.SetKey("I"); }));
    Run(On<Node>("A", "GetXmlElement", [&](Node& node) { return node.GetXmlElement(&m_spNode); }));
    for (const char* xml : {R"(<a name="X">text</a>)", R"(<a name="X" type="list"><v>one</v></a>)",
                            R"(<a name="X" type="nvlist"><nv name="n">v</nv></a>)",
                            R"(<a name="X" type="table"><row><cell>x</cell></row></a>)",
                            R"(<a name="X" type="object"><o><a name="Class">Person</a><a name="Key">E</a></o></a>)"}) {
        const CATBaseUnknown_var spElement = ReadElement(xml);
        Run(On<Node>("info", xml, [&](Node& node) { return node.SetAttributeAsXmlNode(spElement); }).Depends());
    }
    Run(On<Node>("A", "GetAllAttributeNames", [&](Node& node) { return node.GetAllAttributeNames(&m_Texts); }));
    Run(On<Node>("A", "AttributeIsDefined", [&](Node& node) { return node.AttributeIsDefined("Name", &m_bFlag); }));
    Run(On<Node>("A", "GetAttributeDataType",
                 [&](Node& node) { return node.GetAttributeDataType("Name", &m_usText); }));
    Run(On<Node>("A", "GetStringAttributePtr", [](Node& node) {
        QTBStringAttr* pAttr = nullptr;
        return node.GetStringAttributePtr("Name", &pAttr);
    }));
    Run(On<Node>("A", "GetStringAttributes", [](Node& node) {
        CATListPtrQTBStringAttr attrs;
        return node.GetStringAttributes(&attrs);
    }));
    Run(On<Node>("A", "GetSimpleListAttributes", [](Node& node) {
        CATListPtrQTBSimpleListAttr attrs;
        return node.GetSimpleListAttributes(&attrs);
    }));
    Run(On<Node>("A", "GetNameValueListAttributes", [](Node& node) {
        CATListPtrQTBNameValueListAttr attrs;
        return node.GetNameValueListAttributes(&attrs);
    }));
    Run(On<Node>("A", "GetTableAttributes", [](Node& node) {
        CATListPtrQTBTableAttr attrs;
        return node.GetTableAttributes(&attrs);
    }));
    Run(On<Node>("A", "GetObjectAttributes", [](Node& node) {
        CATListPtrQTBObjectAttr attrs;
        return node.GetObjectAttributes(&attrs);
    }));
}

TEST_F(AccessFaults, OfRelationsEndInFailures)
{
    using Node = QTBINodeRelations;
    // A link has two ends, and what fails between them leaves one.
    Run(On<Node>("A", "AddRightNode", [&](Node& node) { return node.AddRightNode("PartPart", m_spSecond, 1, TRUE); })
            .With("BC")
            .Depends()
            .StopsHalfWay());
    Run(On<Node>("BC", "AddLeftNode", [&](Node& node) { return node.AddLeftNode("PartPart", m_spSecond, 0, TRUE); })
            .With("A")
            .Depends()
            .StopsHalfWay());
    Run(On<Node>("A", "RemoveRightNode", [&](Node& node) { return node.RemoveRightNode("PartPart", m_spSecond); })
            .With("AB")
            .Depends()
            .StopsHalfWay());
    Run(On<Node>("AB", "RemoveLeftNode", [&](Node& node) { return node.RemoveLeftNode("PartPart", m_spSecond); })
            .With("A")
            .Depends()
            .StopsHalfWay());
    Run(On<Node>("AB", "SetLeftNodeList",
                 [&](Node& node) {
                     CATListValCATBaseUnknown_var nodes;
                     nodes.Append(m_spSecond);
                     return node.SetLeftNodeList("PartPart", nodes);
                 })
            .With("C")
            .Depends()
            .StopsHalfWay());
    Run(On<Node>("A", "RightNodeExists", [&](Node& node) {
            return node.RightNodeExists("PartPart", m_spSecond, &m_bFlag);
        }).With("AB"));
    Run(On<Node>("AB", "LeftNodeExists", [&](Node& node) {
            return node.LeftNodeExists("PartPart", m_spSecond, &m_bFlag);
        }).With("A"));
    for (const NodesToRetrieve mode : {ALL_NODES, MOST_RECENTLY_UPDATED_NODES, ONLY_CURRENT_NODES}) {
        Run(On<Node>("B", "GetLeftNodeList", [&](Node& node) {
                return node.GetLeftNodeList("PartPart", &m_Nodes, mode);
            }).Empties(m_Nodes));
        Run(On<Node>("A", "GetAllRightRelations", [&](Node& node) {
                return node.GetAllRightRelations(&m_Nodes, TRUE, mode);
            }).Appends(m_Nodes));
    }
    Run(On<Node>("A", "GetRightRelationNames", [&](Node& node) {
            return node.GetRightRelationNames(&m_Texts, TRUE);
        }).Empties(m_Texts));
    Run(On<Node>("A", "GetLeftRelationNames", [&](Node& node) {
            return node.GetLeftRelationNames(&m_Texts, FALSE);
        }).Empties(m_Texts));
    Run(On<Node>("A", "GetRightRelationsCount",
                 [&](Node& node) { return node.GetRightRelationsCount(&m_Number, TRUE); }));
    Run(On<Node>("A", "GetLeftRelationsCount",
                 [&](Node& node) { return node.GetLeftRelationsCount(&m_Number, FALSE); }));
}

TEST_F(AccessFaults, OfPdmNodesEndInFailures)
{
    using Node = QTBIPdmNode;
    // These are not provided; they fail whatever goes wrong.
    Run(On<Node>("A", "GetQtbAttr of a flag", [&](Node& node) {
            return node.GetQtbAttr("QtbVersion", &m_bFlag, TRUE, nullptr, TRUE);
        }).Depends());
    Run(On<Node>("A", "GetQtbAttr of a list", [&](Node& node) {
            return node.GetQtbAttr("QtbVersion", &m_Texts, TRUE, nullptr, TRUE);
        }).Depends());
    Run(On<Node>("A", "GetQtbAttr of a text", [&](Node& node) {
            return node.GetQtbAttr("QtbVersion", &m_usText, TRUE, nullptr, TRUE);
        }).Depends());
    Run(On<Node>("A", "GetSchemaNodePtr", [](Node& node) {
        QTBSchemaNode* pSchemaNode = nullptr;
        return node.GetSchemaNodePtr(&pSchemaNode);
    }));
    Run(On<Node>("A", "SetSchemaNodePtr", [](Node& node) {
            QTBSchemaNode* pSchemaNode = nullptr;
            node.GetSchemaNodePtr(&pSchemaNode);
            return node.SetSchemaNodePtr(pSchemaNode);
        }).Depends());
    Run(On<Node>("A", "SetPdmNodeContainer", [](Node& node) { return node.SetPdmNodeContainer(GetPdmNodeCont()); }));
    Run(On<Node>("A", "GetPdmKey", [&](Node& node) {
        m_usText = node.GetPdmKey();
        return S_OK;
    }));
    Run(On<Node>("A", "GetPdmKeyHash", [](Node& node) { return node.GetPdmKeyHash() != 0 ? S_OK : E_FAIL; }));
    Run(On<QTBIPdmObjNode>("A", "GetSchemaObjectPtr", [](QTBIPdmObjNode& node) {
        QTBSchemaObject* pSchemaObject = nullptr;
        return node.GetSchemaObjectPtr(&pSchemaObject);
    }));
    Run(On<QTBIPdmObjNode>("A", "SetSchemaObjectPtr", [](QTBIPdmObjNode& node) {
            QTBSchemaObject* pSchemaObject = nullptr;
            node.GetSchemaObjectPtr(&pSchemaObject);
            return node.SetSchemaObjectPtr(pSchemaObject);
        }).Depends());
    using Relation = QTBIPdmRelNode;
    Run(On<Relation>("AB", "GetSchemaRelationPtr", [](Relation& node) {
        QTBSchemaRelation* pSchemaRelation = nullptr;
        return node.GetSchemaRelationPtr(&pSchemaRelation);
    }));
    Run(On<Relation>("AB", "SetSchemaRelationPtr", [](Relation& node) {
            QTBSchemaRelation* pSchemaRelation = nullptr;
            node.GetSchemaRelationPtr(&pSchemaRelation);
            return node.SetSchemaRelationPtr(pSchemaRelation);
        }).Depends());
    Run(On<Relation>("AB", "SetRightObject", [&](Relation& node) { return node.SetRightObject(m_spSecond); })
            .With("C")
            .Depends()
            .StopsHalfWay());
    Run(On<Relation>("AB", "GetLeftObject", [](Relation& node) {
            QTBIPdmObjNode_var spObject;
            return node.GetLeftObject(&spObject);
        }).Depends());
    Run(On<Relation>("AB", "GetRightObject", [](Relation& node) {
            QTBIPdmObjNode_var spObject;
            return node.GetRightObject(&spObject);
        }).Depends());
}

TEST_F(AccessFaults, OfTheGraphEndInFailures)
{
    using Graph = QTBIPdmNodeCont;
    Run(On<Graph>("graph", "GetAllPdmNodes", [&](Graph& graph) {
            return graph.GetAllPdmNodes(&m_Nodes);
        }).Empties(m_Nodes));
    Run(On<Graph>("graph", "GetPdmNodes by several attributes",
                  [&](Graph& graph) {
                      CATListValCATUnicodeString names;
                      names.Append("PartNumber");
                      CATListValCATUnicodeString values;
                      values.Append("N1");
                      m_Texts.RemoveAll();
                      m_Texts.Append("Part");
                      return graph.GetPdmNodes(&m_Texts, names, values, &m_Nodes);
                  })
            .Depends()
            .Empties(m_Nodes));
    Run(On<Graph>("graph", "CreatePdmRelNode",
                  [&](Graph& graph) { return graph.CreatePdmRelNode("N", &m_spNode, FALSE); })
            .Depends()
            .StopsHalfWay());
    Run(On<Graph>("graph", "AddRepNodeContainer",
                  [&](Graph& graph) {
                      graph.RemoveRepNodeContainer(&m_spSecond);
                      return graph.AddRepNodeContainer(&m_spSecond);
                  })
            .With("cont")
            .Depends()
            .StopsHalfWay());
    Run(On<Graph>("graph", "RemoveRepNodeContainer",
                  [&](Graph& graph) { return graph.RemoveRepNodeContainer(&m_spSecond); })
            .With("cont")
            .Depends()
            .StopsHalfWay());
    Run(On<Graph>("graph", "RemoveDefaultRootNode",
                  [](Graph& graph) {
                      graph.CreateDefaultRootNode();
                      return graph.RemoveDefaultRootNode();
                  })
            .Depends()
            .StopsHalfWay());
    const std::string answer = Answer(Part("P") + PartPart("AP", "A", "P"));
    Run(On<Graph>("graph", "UpdatePdmGraph by a document",
                  [&](Graph& graph) {
                      CATIDOMDocument_var spAnswer;
                      QTBXmlUtil::GetDomDocument(CATUnicodeString(answer), &spAnswer);
                      return graph.UpdatePdmGraph(spAnswer, &m_Nodes, &m_Nodes);
                  })
            .Depends()
            .StopsHalfWay());
    Run(On<Graph>("graph", "RemoveNodeFromPdmGraph of a node",
                  [&](Graph& graph) {
                      QTBIPdmNode_var spNode(m_spSecond);
                      return graph.RemoveNodeFromPdmGraph(&spNode, TRUE, FALSE, TRUE, nullptr);
                  })
            .With("D")
            .Depends()
            .StopsHalfWay());
}

TEST_F(AccessFaults, OfRepNodesEndInFailures)
{
    using Node = QTBIRepNode;
    for (const char* subject : {"window:B", "cont:AB"}) {
        Run(On<Node>(subject, "RepresentsPdmObjNode", [&](Node& node) {
                return node.RepresentsPdmObjNode(&m_bFlag);
            }).Depends());
        Run(On<Node>(subject, "GetPdmRelationsToBeDisplayed", [](Node& node) {
                CATListValQTBNodeRelationInfo infos;
                return node.GetPdmRelationsToBeDisplayed(&infos);
            }).Depends());
        Run(On<Node>(subject, "GetMarkForRemoval", [&](Node& node) { return node.GetMarkForRemoval(&m_bFlag); }));
        Run(On<Node>(subject, "SetMarkForRemoval", [&](Node& node) { return node.SetMarkForRemoval(&m_bNo); }));
        Run(On<Node>(subject, "GetSinglePdmRelationToBeDisplayed", [&](Node& node) {
                return node.GetSinglePdmRelationToBeDisplayed(&m_Info);
            }).Depends());
        Run(On<Node>(subject, "GetPdmRelationToLeftNode", [&](Node& node) {
                return node.GetPdmRelationToLeftNode(&m_Info);
            }).Depends());
        Run(On<Node>(subject, "SetPdmRelationToLeftNode",
                     [](Node& node) { return node.SetPdmRelationToLeftNode(PARTS); })
                .Depends()
                .Changes());
        Run(On<Node>(subject, "GetFrmWindowPtr", [](Node& node) {
                CATFrmWindow* pWindow = nullptr;
                return node.GetFrmWindowPtr(&pWindow);
            }).Depends());
        Run(On<Node>(subject, "FrmWindowPtrExists", [&](Node& node) { return node.FrmWindowPtrExists(&m_bFlag); }));
        Run(On<Node>(subject, "GetRepNodeContainer", [](Node& node) {
            QTBIRepNodeCont_var spCont;
            return node.GetRepNodeContainer(&spCont);
        }));
        Run(On<Node>(subject, "AddDebugAttribute", [](Node& node) {
                return node.AddDebugAttribute("Name", "text");
            }).Depends());
        Run(On<Node>(subject, "AddPdmNodeKeyForDebug", [](Node& node) {
                return node.AddPdmNodeKeyForDebug("B");
            }).Depends());
    }
    Run(On<Node>("cont:AB", "SetSinglePdmRelationToBeDisplayed",
                 [](Node& node) { return node.SetSinglePdmRelationToBeDisplayed(PARTS); })
            .Depends()
            .Changes());
    Run(On<Node>("window:B", "SetFrmWindowPtr",
                 [&](Node& node) { return node.SetFrmWindowPtr(m_pWindow->GetFrmWindow()); }));
    Run(On<Node>("window:B", "SetRepNodeContainer",
                 [&](Node& node) { return node.SetRepNodeContainer(m_pWindow->GetCont()); }));
    Run(On<Node>("cont:A", "MarkChildrenForRemoval of one relation",
                 [&](Node& node) { return node.MarkChildrenForRemoval(PARTS, &m_bYes); })
            .Depends()
            .Changes());
}

TEST_F(AccessFaults, OfRepNodeContainersEndInFailures)
{
    using Cont = QTBIRepNodeCont;
    for (const char* subject : {"window", "cont"}) {
        Run(On<Cont>(subject, "SetPdmNodesToConsider", [](Cont& cont) {
            NodesToRetrieve nodes = ALL_NODES;
            return cont.SetPdmNodesToConsider(&nodes);
        }));
        Run(On<Cont>(subject, "SetRepChildRelationsToUpdate", [](Cont& cont) {
                RepChildRelationsToUpdate relations = ALL_RELATIONS_STORED_IN_REP_NODE;
                return cont.SetRepChildRelationsToUpdate(&relations);
            }).Changes());
        Run(On<Cont>(subject, "GetAllRepNodes", [&](Cont& cont) {
                return cont.GetAllRepNodes(&m_Nodes);
            }).Empties(m_Nodes));
        Run(On<Cont>(subject, "GetRepNodeByKey",
                     [&](Cont& cont) { return cont.GetRepNodeByKey("no key", &m_spRepNode, &m_bFlag); })
                .Depends()
                .Resets(m_spRepNode));
        Run(On<Cont>(subject, "GetQtbFrmWindowPtr", [](Cont& cont) {
                CATFrmWindow* pWindow = nullptr;
                return cont.GetQtbFrmWindowPtr(&pWindow);
            }).Depends());
        Run(On<Cont>(subject, "QtbFrmWindowPtrIsSet", [&](Cont& cont) { return cont.QtbFrmWindowPtrIsSet(&m_bFlag); }));
        Run(On<Cont>(subject, "GetId", [&](Cont& cont) { return cont.GetId(&m_Number); }));
        Run(On<Cont>(subject, "SetQtbFrmWindowPtrToNull", [](Cont& cont) { return cont.SetQtbFrmWindowPtrToNull(); })
                .Depends()
                .StopsHalfWay());
    }
}

TEST_F(AccessFaults, OfProductsEndInFailures)
{
    using Node = QTBIPsnNode;
    Run(On<Node>("product:B", "GetReferenceDocumentPtr", [](Node& node) {
            CATDocument* pDocument = nullptr;
            return node.GetReferenceDocumentPtr(&pDocument, TRUE);
        }).Depends());
    Run(On<Node>("product:B", "SetReferenceCatiaAttrsChecked", [](Node& node) {
            return node.SetReferenceCatiaAttrsChecked(TRUE);
        }).Depends());
    Run(On<Node>("product:B", "GetReferenceCatiaAttrsChecked", [&](Node& node) {
            return node.GetReferenceCatiaAttrsChecked(&m_bFlag);
        }).Depends());
    Run(On<Node>("product:B", "AddMessagesFromPdm", [](Node& node) {
            CATListValQTBPdmMessage messages;
            messages.Append(QTBPdmMessage());
            return node.AddMessagesFromPdm(messages);
        }).Depends());
    Run(On<Node>("product:B", "GetMessagesFromPdm", [](Node& node) {
            CATListValQTBPdmMessage messages;
            return node.GetMessagesFromPdm(&messages);
        }).Depends());
    Run(On<Node>("product:B", "DeleteMessagesFromPdm", [](Node& node) {
            return node.DeleteMessagesFromPdm();
        }).Depends());
}

} // namespace
