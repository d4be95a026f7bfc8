#include <gmock/gmock.h>

#include "CATIDOMDocument.h"
#include "QTBFaultSession.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBMatchers.h"
#include "QTBXmlUtil.h"

namespace {

// The operations of the nodes of the PDM graph and of the graph itself.
class PdmNodeFaults : public QTBFaultSession
{
protected:
    static constexpr unsigned char NO = FALSE;

    CATUnicodeString m_usText;
    CATUnicodeString m_usMoreText;
    CATListValCATUnicodeString m_Texts;
    CATListValCATBaseUnknown_var m_Nodes;
    CATListValCATBaseUnknown_var m_MoreNodes;
    unsigned char m_bFlag = FALSE;
    QTBIPdmNode_var m_spNode;

    void Forget() override
    {
        m_spNode = NULL_var;
        m_Nodes.RemoveAll();
        m_MoreNodes.RemoveAll();
    }
};

TEST_F(PdmNodeFaults, OfPdmNodesEndInFailures)
{
    for (const char* subject : {"A", "AB"}) {
        Run(On<QTBIPdmNode>(subject, "GetRepNodes", [&](QTBIPdmNode& node) {
                return node.GetRepNodes(&m_Nodes, m_spCont);
            }).Empties(m_Nodes));
        Run(On<QTBIPdmNode>(subject, "RedrawRepNodes", [&](QTBIPdmNode& node) {
                unsigned char bRecursive = TRUE;
                return node.RedrawRepNodes(&bRecursive);
            }).Renames({"QTBIRepNode::Redraw"}));
        Run(On<QTBIPdmNode>(subject, "PreselectRepNodes", [&](QTBIPdmNode& node) {
                return node.PreselectRepNodes();
            }).Renames({"QTBVisUtil::GetPathElementPtrFromNode"}));
        Run(On<QTBIPdmNode>(subject, "HighlightRepNodes", [&](QTBIPdmNode& node) {
                unsigned char bObject = TRUE;
                return node.HighlightRepNodes(TRUE, &bObject);
            }).Tolerates({"QTBIRepNode::GetFrmEditorPtr", "QTBVisUtil::GetPathElementPtrFromNode"}));
        Run(On<QTBIPdmNode>(subject, "GetClassName", [&](QTBIPdmNode& node) { return node.GetClassName(&m_usText); }));
        Run(On<QTBIPdmNode>(subject, "GetDescriptionString", [&](QTBIPdmNode& node) {
                return node.GetDescriptionString(&m_usText);
            }).Depends());
        Run(On<QTBIPdmNode>(subject, "IsAffectedByCurrentAction",
                            [&](QTBIPdmNode& node) { return node.IsAffectedByCurrentAction(&m_bFlag); }));
        Run(On<QTBIPdmNode>(subject, "SetPdmKey", [&](QTBIPdmNode& node) { return node.SetPdmKey(); }));
        Run(On<QTBIPdmNode>(subject, "GetPdmNodeContainer", [&](QTBIPdmNode& node) {
            QTBIPdmNodeCont_var spCont;
            return node.GetPdmNodeContainer(&spCont);
        }));
    }
    Run(On<QTBIPdmNode>("A", "SetQtbInfoAttr", [&](QTBIPdmNode& node) {
            return node.SetQtbInfoAttr("QtbVersion", "2");
        }).Renames({"QTBNameValueListAttr::SetNvValue"}));
    Run(On<QTBIPdmNode>("A", "GetQtbInfoAttr of a flag", [&](QTBIPdmNode& node) {
            return node.GetQtbInfoAttr("QtbIsEditAllowed", &m_bFlag, TRUE, nullptr, TRUE);
        }).Renames({"QTBNameValueListAttr::GetNvValue"}));
    Run(On<QTBIPdmNode>("A", "GetQtbInfoAttr of a list", [&](QTBIPdmNode& node) {
            return node.GetQtbInfoAttr("QtbVersion", &m_Texts, TRUE, nullptr, TRUE);
        }).Renames({"QTBNameValueListAttr::GetNvValue"}));
    Run(On<QTBIPdmNode>("A", "GetQtbInfoAttr of an undefined attribute", [&](QTBIPdmNode& node) {
            return node.GetQtbInfoAttr("Undefined", &m_usText, TRUE, nullptr, TRUE);
        }).Depends());
    Run(On<QTBIPdmNode>("A", "GetQtbInfoAttrXmlAttrVal", [&](QTBIPdmNode& node) {
            return node.GetQtbInfoAttrXmlAttrVal("QtbVersion", "unit", &m_usText);
        }).Tolerates({"QTBNameValueListAttr::GetNvEntryXmlAttrVal"}));
}

TEST_F(PdmNodeFaults, OfObjectsEndInFailures)
{
    Run(On<QTBIPdmObjNode>("A", "IsPdmRootNode", [&](QTBIPdmObjNode& node) { return node.IsPdmRootNode(&m_bFlag); }));
    Run(On<QTBIPdmObjNode>("A", "GetRightNodes",
                           [&](QTBIPdmObjNode& node) {
                               return node.GetRightNodes("PartPart", &m_Nodes, &m_MoreNodes, ALL_NODES, TRUE, nullptr,
                                                         TRUE);
                           })
            .Depends()
            .Empties(m_Nodes)
            .Empties(m_MoreNodes));
    Run(On<QTBIPdmObjNode>("B", "GetLeftNodes",
                           [&](QTBIPdmObjNode& node) {
                               CATListValCATUnicodeString classes;
                               classes.Append("Part");
                               return node.GetLeftNodes("PartPart", &m_Nodes, &m_MoreNodes, ONLY_CURRENT_NODES, FALSE,
                                                        &classes, FALSE);
                           })
            .Empties(m_Nodes)
            .Empties(m_MoreNodes));
    Run(On<QTBIPdmObjNode>("A", "ToXml", [&](QTBIPdmObjNode& node) {
            return node.ToXml(&m_usText, "", "", TRUE);
        }).Depends());
    Run(On<QTBIPdmObjNode>("A", "GetClassAttr",
                           [&](QTBIPdmObjNode& node) { return node.GetClassAttr(&m_usText, &m_usMoreText); }));
    Run(On<QTBIPdmObjNode>("B", "RetrieveAdjacentRelationNodes", [&](QTBIPdmObjNode& node) {
            return node.RetrieveAdjacentRelationNodes(&m_Nodes, 2);
        }).Empties(m_Nodes));
    Run(On<QTBIPdmObjNode>("B", "RemoveAllAdjacentPdmRelNodes",
                           [&](QTBIPdmObjNode& node) { return node.RemoveAllAdjacentPdmRelNodes(FALSE, FALSE); })
            .StopsHalfWay()
            .Depends());
}

TEST_F(PdmNodeFaults, OfRelationsEndInFailures)
{
    Run(On<QTBIPdmRelNode>("AB", "GetObjectKeys", [&](QTBIPdmRelNode& node) {
            return node.GetObjectKeys(&m_usText, &m_usMoreText);
        }).Renames({"QTBINodeAttributes::GetKey"}));
    Run(On<QTBIPdmRelNode>("AB", "GetRelationAttr",
                           [&](QTBIPdmRelNode& node) { return node.GetRelationAttr(&m_usText, &m_usMoreText); }));
    Run(On<QTBIPdmRelNode>("AB", "GetLeftRelationshipAttr", [&](QTBIPdmRelNode& node) {
        return node.GetLeftRelationshipAttr(&m_usText, &m_usMoreText);
    }));
    Run(On<QTBIPdmRelNode>("AB", "GetRightRelationshipAttr", [&](QTBIPdmRelNode& node) {
        return node.GetRightRelationshipAttr(&m_usText, &m_usMoreText);
    }));
    Run(On<QTBIPdmRelNode>("AB", "GetLeftRelationClassAttr", [&](QTBIPdmRelNode& node) {
        return node.GetLeftRelationClassAttr(&m_usText, &m_usMoreText);
    }));
    Run(On<QTBIPdmRelNode>("AB", "GetRightRelationClassAttr", [&](QTBIPdmRelNode& node) {
        return node.GetRightRelationClassAttr(&m_usText, &m_usMoreText);
    }));
    Run(On<QTBIPdmRelNode>("AB", "IsA", [&](QTBIPdmRelNode& node) { return node.IsA("PartPart", &m_bFlag); }));
    Run(On<QTBIPdmRelNode>("AB", "ToXml", [&](QTBIPdmRelNode& node) {
            return node.ToXml(&m_usText, "", "", TRUE);
        }).Depends());
    Run(On<QTBIPdmRelNode>("AB", "SetLeftObject", [&](QTBIPdmRelNode& node) { return node.SetLeftObject(m_spSecond); })
            .With("C")
            .StopsHalfWay()
            .Renames({"QTBINodeRelations::SetLeftNodeList"}));
}

TEST_F(PdmNodeFaults, OfLookUpsEndInFailures)
{
    Run(On<QTBIPdmNodeCont>("graph", "GetPdmRootNodes", [&](QTBIPdmNodeCont& graph) {
            return graph.GetPdmRootNodes(&m_Nodes);
        }).Empties(m_Nodes));
    Run(On<QTBIPdmNodeCont>("graph", "GetPdmPartByPartNumber", [&](QTBIPdmNodeCont& graph) {
            QTBIPdmNode_var spPart;
            return graph.GetPdmPartByPartNumber("N1", &spPart);
        }).Depends());
    Run(On<QTBIPdmNodeCont>("graph", "GetPdmNode", [&](QTBIPdmNodeCont& graph) {
            QTBIPdmNode_var spNode;
            return graph.GetPdmNode("Part", "PartNumber", "N1", &spNode);
        }).Depends());
    Run(On<QTBIPdmNodeCont>("graph", "GetPdmNode of several", [&](QTBIPdmNodeCont& graph) {
            QTBIPdmNode_var spNode;
            return graph.GetPdmNode("Part", "Name", "Axle", &spNode);
        }).Depends());
    Run(On<QTBIPdmNodeCont>("graph", "GetPdmNodes", [&](QTBIPdmNodeCont& graph) {
            return graph.GetPdmNodes("Part", "PartNumber", "N1", &m_Nodes);
        }).Depends());
    Run(On<QTBIPdmNodeCont>("graph", "GetPdmNodeByKey", [&](QTBIPdmNodeCont& graph) {
            return graph.GetPdmNodeByKey("A", &m_spNode, &m_bFlag);
        }).Resets(m_spNode));
    Run(On<QTBIPdmNodeCont>("graph", "RefreshPdmNode", [&](QTBIPdmNodeCont& graph) {
            QTBIPdmNode_var spOld(m_spSecond);
            QTBIPdmNode_var spNew;
            return graph.RefreshPdmNode(&spOld, &spNew);
        }).With("A"));
}

TEST_F(PdmNodeFaults, OfGraphUpdatesEndInFailures)
{
    const std::string answer =
        Answer(Part("A", Attribute("PartNumber", "N1")) + Part("X", Info({{"QtbKey", "X"}, {"QtbSupersedes", "C"}})) +
               PartPart("AX", "A", "X") + PartPart("AB", "A", "B") +
               Part("O", R"(<a name="Owner" type="object"><embedded><a name="Class">Person</a></embedded></a>)") +
               "<objectToDelete>FC</objectToDelete><relationToDelete>AD</relationToDelete>");
    Run(On<QTBIPdmNodeCont>("graph", "UpdatePdmGraph",
                            [&](QTBIPdmNodeCont& graph) {
                                return graph.UpdatePdmGraph(CATUnicodeString(answer), &m_Nodes, &m_MoreNodes);
                            })
            .StopsHalfWay()
            .Depends());
    Run(On<QTBIPdmNodeCont>("graph", "CreatePdmObjNode",
                            [&](QTBIPdmNodeCont& graph) {
                                CATBaseUnknown_var spNode;
                                return graph.CreatePdmObjNode("N", &spNode, TRUE);
                            })
            .StopsHalfWay()
            .Depends());
    Run(On<QTBIPdmNodeCont>("graph", "CreateDefaultRootNode",
                            [&](QTBIPdmNodeCont& graph) { return graph.CreateDefaultRootNode(); })
            .StopsHalfWay()
            .Depends());
    Run(On<QTBIPdmNodeCont>("graph", "CreateRelationInPdmGraph",
                            [&](QTBIPdmNodeCont& graph) {
                                QTBFakeCommunication::AnswerWith(Answer(PartPart("AC", "A", "C")));
                                return graph.CreateRelationInPdmGraph("PartPart", m_spSecond, m_spSecond, "");
                            })
            .With("C")
            .StopsHalfWay()
            .Depends());
}

TEST_F(PdmNodeFaults, OfUpdatesWithItemsOfOtherFormsEndInFailures)
{
    // A specialised class, and objects that a function call gives back.
    const std::string specialised = Object("Gear", "G", Info({{"QtbRelevantBaseClass", "Part"}}));
    Run(On<QTBIPdmNodeCont>("graph", "UpdatePdmGraph with a specialised class",
                            [&](QTBIPdmNodeCont& graph) {
                                return graph.UpdatePdmGraph(CATUnicodeString(Answer(specialised)), &m_Nodes,
                                                            &m_MoreNodes);
                            })
            .Depends()
            .StopsHalfWay());
    Run(On<QTBIPdmNodeCont>("graph", "UpdatePdmGraph with a function's objects",
                            [&](QTBIPdmNodeCont& graph) {
                                return graph.UpdatePdmGraph(
                                    CATUnicodeString(
                                        R"(<answer><function name="dynamicInvoke"><outArgs><arg name="x">)" +
                                        Part("I") + "</arg></outArgs></function></answer>"),
                                    &m_Nodes, &m_MoreNodes);
                            })
            .Depends()
            .StopsHalfWay());
    Run(On<QTBIPdmRelNode>("BC", "IsA of a parent class",
                           [&](QTBIPdmRelNode& node) { return node.IsA("Usage", &m_bFlag); })
            .Depends()
            .Changes());
}

// A document that can be made to fail. It belongs to no component and is not counted.
class FaultyDocument : public CATIDOMDocument
{
public:
    explicit FaultyDocument(const std::string& xml) : CATIDOMDocument(nullptr)
    {
        EXPECT_THAT(QTBXmlUtil::GetDomDocument(CATUnicodeString(xml), &m_spReal), Succeeds());
    }

    HRESULT QueryInterface(const IID& iid, void** ppv) override
    {
        *ppv = this;
        return iid == IID_CATIDOMDocument || iid == IID_CATIDOMNode ? S_OK : E_NOINTERFACE;
    }
    HRESULT GetNodeName(CATUnicodeString* pusName) override { return m_spReal->GetNodeName(pusName); }
    HRESULT GetParentNode(CATIDOMNode_var* pspParent) override { return m_spReal->GetParentNode(pspParent); }
    HRESULT GetFirstChild(CATIDOMNode_var* pspChild) override { return m_spReal->GetFirstChild(pspChild); }
    HRESULT GetNextSibling(CATIDOMNode_var* pspNode) override { return m_spReal->GetNextSibling(pspNode); }
    HRESULT AppendChild(const CATIDOMNode_var& spChild) override { return m_spReal->AppendChild(spChild); }
    HRESULT RemoveChild(const CATIDOMNode_var& spChild) override { return m_spReal->RemoveChild(spChild); }
    HRESULT GetCharData(CATUnicodeString* pusText) override { return m_spReal->GetCharData(pusText); }
    HRESULT GetDocumentElement(CATIDOMElement_var* pspElement) override
    {
        if (m_bHasNoElement) {
            *pspElement = NULL_var;
            return S_OK;
        }
        return m_bElementFails ? E_FAIL : m_spReal->GetDocumentElement(pspElement);
    }
    HRESULT GetElementsByTagName(const CATUnicodeString& usTagName, CATIDOMNodeList_var* pspNodes) override
    {
        return usTagName == m_usFailingTag ? E_FAIL : m_spReal->GetElementsByTagName(usTagName, pspNodes);
    }
    HRESULT CreateElement(const CATUnicodeString& usTagName, CATIDOMElement_var* pspElement) override
    {
        return m_spReal->CreateElement(usTagName, pspElement);
    }

    bool m_bElementFails = false;
    bool m_bHasNoElement = false;
    CATUnicodeString m_usFailingTag;

private:
    CATIDOMDocument_var m_spReal;
};

TEST_F(PdmNodeFaults, OfDocumentsEndInFailures)
{
    FaultyDocument document(Answer(Part("P")));
    const auto read = [&] { return GetPdmNodeCont()->UpdatePdmGraph(&document, nullptr, nullptr); };
    document.m_bElementFails = true;
    EXPECT_THAT(read(), FailsCall("spIDOMDocument->GetDocumentElement"));
    document.m_bElementFails = false;
    document.m_bHasNoElement = true;
    EXPECT_THAT(read(), FailsAssertion("spIDOMElementOnDocumentRoot != NULL_var"));
    document.m_bHasNoElement = false;
    for (const char* tag : {"r", "objectToDelete", "relationToDelete"}) {
        document.m_usFailingTag = tag;
        EXPECT_THAT(read(), FailsCall("spIDOMDocument->GetElementsByTagName")) << tag;
    }
    document.m_usFailingTag = "";
    EXPECT_THAT(read(), Succeeds());
    EXPECT_TRUE(FindNode("P") != NULL_var);
}

TEST_F(PdmNodeFaults, OfRemovalsEndInFailures)
{
    Run(On<QTBIPdmNodeCont>(
            "graph", "RemoveNodeFromPdmGraph by key",
            [&](QTBIPdmNodeCont& graph) { return graph.RemoveNodeFromPdmGraph("B", TRUE, FALSE, TRUE, nullptr); })
            .StopsHalfWay()
            .Depends());
    Run(On<QTBIPdmNodeCont>("graph", "RemoveNodeFromPdmGraph, the node kept",
                            [&](QTBIPdmNodeCont& graph) {
                                QTBIPdmNode_var spNode(m_spSecond);
                                return graph.RemoveNodeFromPdmGraph(&spNode, FALSE, TRUE, FALSE, nullptr);
                            })
            .With("B")
            .StopsHalfWay()
            .Depends());
    Run(On<QTBIPdmNodeCont>("graph", "UpdateAllRepNodeContainers",
                            [&](QTBIPdmNodeCont& graph) {
                                unsigned char bAddNewNodes = TRUE;
                                return graph.UpdateAllRepNodeContainers(&bAddNewNodes);
                            })
            .StopsHalfWay()
            .Depends());
    Run(On<QTBIPdmNodeCont>("graph", "CheckRepNodeContainers",
                            [&](QTBIPdmNodeCont& graph) { return graph.CheckRepNodeContainers(); })
            .StopsHalfWay()
            .Depends());
    Run(On<QTBIPdmNodeCont>("graph", "Cleanup", [&](QTBIPdmNodeCont& graph) { return graph.Cleanup(); })
            .StopsHalfWay()
            .Depends());
}

} // namespace
