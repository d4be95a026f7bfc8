#include <gmock/gmock.h>

#include "QTBFaultSession.h"
#include "QTBLoadManager.h"

namespace {

// The operations that every node has.
class NodeFaults : public QTBFaultSession
{
protected:
    CATUnicodeString m_usText;
    CATListValCATUnicodeString m_Texts;
    CATListValCATUnicodeString m_MoreTexts;
    CATListValCATBaseUnknown_var m_Nodes;
    unsigned char m_bFlag = FALSE;
    int m_Number = 0;

    void Forget() override { m_Nodes.RemoveAll(); }
};

TEST_F(NodeFaults, OfIdentityEndInAQuestionMark)
{
    for (const char* subject : {"A", "AB", "window:A", "window:AB"}) {
        Run(On<QTBINode>(subject, "GetNodeDescriptionString", [&](QTBINode& node) {
                return node.GetNodeDescriptionString(&m_usText);
            }).NeverFails());
        Run(On<QTBINode>(subject, "GetPdmClass", [&](QTBINode& node) {
                return node.GetPdmClass(&m_usText);
            }).NeverFails());
    }
}

TEST_F(NodeFaults, OfAttributesEndInFailures)
{
    Run(On<QTBINodeAttributes>("A", "GetStringAttributeValue", [&](QTBINodeAttributes& node) {
        return node.GetStringAttributeValue("State", &m_usText, FALSE, TRUE);
    }));
    Run(On<QTBINodeAttributes>("A", "GetStringAttributeValue of a list", [&](QTBINodeAttributes& node) {
            return node.GetStringAttributeValue("List", &m_usText, TRUE, FALSE);
        }).IsAbsentWithout({"QTBSimpleListAttr::GetSize"}));
    Run(On<QTBINodeAttributes>("A", "GetStringAttributeValues", [&](QTBINodeAttributes& node) {
            return node.GetStringAttributeValues(&m_Texts);
        }).Empties(m_Texts));
    Run(On<QTBINodeAttributes>("A", "GetAttribute", [&](QTBINodeAttributes& node) {
        QTBNodeAttr* pNodeAttr = nullptr;
        return node.GetAttribute("Name", &pNodeAttr);
    }));
    Run(On<QTBINodeAttributes>("A", "GetStringAttributeNames", [&](QTBINodeAttributes& node) {
            return node.GetStringAttributeNames(&m_Texts);
        }).Empties(m_Texts));
    Run(On<QTBINodeAttributes>("A", "GetSimpleListAttributeNames", [&](QTBINodeAttributes& node) {
            return node.GetSimpleListAttributeNames(&m_Texts);
        }).Empties(m_Texts));
    Run(On<QTBINodeAttributes>("A", "GetNameValueListAttributeNames", [&](QTBINodeAttributes& node) {
            return node.GetNameValueListAttributeNames(&m_Texts);
        }).Empties(m_Texts));
    Run(On<QTBINodeAttributes>("A", "GetTableAttributeNames", [&](QTBINodeAttributes& node) {
            return node.GetTableAttributeNames(&m_Texts);
        }).Empties(m_Texts));
    Run(On<QTBINodeAttributes>("A", "GetObjectAttributeNames", [&](QTBINodeAttributes& node) {
            return node.GetObjectAttributeNames(&m_Texts);
        }).Empties(m_Texts));
    Run(On<QTBINodeAttributes>("A", "GetSimpleListAttributePtr", [&](QTBINodeAttributes& node) {
        QTBSimpleListAttr* pAttr = nullptr;
        return node.GetSimpleListAttributePtr("List", &pAttr);
    }));
    Run(On<QTBINodeAttributes>("A", "GetNameValueListAttributePtr", [&](QTBINodeAttributes& node) {
        QTBNameValueListAttr* pAttr = nullptr;
        return node.GetNameValueListAttributePtr("QtbInfo", &pAttr);
    }));
    Run(On<QTBINodeAttributes>("A", "GetNameValueListAttributePtr of an undefined one", [&](QTBINodeAttributes& node) {
            QTBNameValueListAttr* pAttr = nullptr;
            return node.GetNameValueListAttributePtr("Undefined", &pAttr);
        }).Depends());
    Run(On<QTBINodeAttributes>("A", "GetTableAttributePtr", [&](QTBINodeAttributes& node) {
        QTBTableAttr* pAttr = nullptr;
        return node.GetTableAttributePtr("Table", &pAttr);
    }));
    Run(On<QTBINodeAttributes>("A", "GetObjectAttributePtr", [&](QTBINodeAttributes& node) {
        QTBObjectAttr* pAttr = nullptr;
        return node.GetObjectAttributePtr("Owner", &pAttr);
    }));
    Run(On<QTBINodeAttributes>("A", "ToXmlString",
                               [&](QTBINodeAttributes& node) { return node.ToXmlString(&m_usText, "", "", "o"); })
            .Tolerates({"QTBINodeAttributes::GetNameValueListAttributePtr", "QTBIPdmNode::GetQtbInfoAttr",
                        "QTBNameValueListAttr::GetNvValue", "QTBNodeAttr::GetName"})
            .Keeps(m_usText));
    Run(On<QTBINodeAttributes>("A", "ToXmlString of some attributes",
                               [&](QTBINodeAttributes& node) {
                                   CATListValCATUnicodeString names;
                                   names.Append("Name");
                                   names.Append("QtbInfo");
                                   return node.ToXmlString(names, &m_usText, "", "", "o");
                               })
            .Tolerates({"QTBINodeAttributes::GetNameValueListAttributePtr", "QTBIPdmNode::GetQtbInfoAttr",
                        "QTBNameValueListAttr::GetNvValue", "QTBNodeAttr::GetName"})
            .Keeps(m_usText));
    Run(On<QTBINodeAttributes>("B", "SetXmlElement", [&](QTBINodeAttributes& node) {
            CATBaseUnknown_var spElement;
            node.GetXmlElement(&spElement);
            return node.SetXmlElement(spElement);
        }).Changes());
    Run(On<QTBINodeAttributes>("A", "SetStringAttributeValue", [&](QTBINodeAttributes& node) {
            return node.SetStringAttributeValue("Name", "Wheel");
        }).Changes());
    Run(On<QTBINodeAttributes>("A", "AddStringAttributeValue", [&](QTBINodeAttributes& node) {
            return node.AddStringAttributeValue("Further", "text");
        }).Changes());
    Run(On<QTBINodeAttributes>("A", "SetCatiaAttributes", [&](QTBINodeAttributes& node) {
            g_QTBLoadManager.SetCatiaAttr("A", "x", "0");
            m_Texts.RemoveAll();
            m_Texts.Append("x");
            return node.SetCatiaAttributes(m_Texts, m_Texts);
        }).Changes());
    Run(On<QTBINodeAttributes>("A", "SetCatiaAttribute",
                               [&](QTBINodeAttributes& node) { return node.SetCatiaAttribute("x", "1"); }));
    Run(On<QTBINodeAttributes>("A", "GetCatiaAttribute",
                               [&](QTBINodeAttributes& node) { return node.GetCatiaAttribute("x", &m_usText); }));
    Run(On<QTBINodeAttributes>(
            "A", "GetCatiaAttributes",
            [&](QTBINodeAttributes& node) { return node.GetCatiaAttributes(&m_Texts, &m_MoreTexts); })
            .Tolerates({"QTBLoadManager::GetCatiaAttributesNvSetPtr"})
            .KeepsWithout("QTBLoadManager::GetCatiaAttributesNvSetPtr", m_Texts)
            .KeepsWithout("QTBLoadManager::GetCatiaAttributesNvSetPtr", m_MoreTexts));
    Run(On<QTBINodeAttributes>("A", "PrintCatiaAttributes", [&](QTBINodeAttributes& node) {
            return node.PrintCatiaAttributes();
        }).Tolerates({"QTBHashTableNvSetAttribute::PrintValues", "QTBLoadManager::GetCatiaAttributesNvSetPtr"}));
}

TEST_F(NodeFaults, OfRelationsEndInFailures)
{
    for (const NodesToRetrieve mode : {ALL_NODES, MOST_RECENTLY_UPDATED_NODES, ONLY_CURRENT_NODES}) {
        Run(On<QTBINodeRelations>("A", "GetRightNodeList", [&](QTBINodeRelations& node) {
                return node.GetRightNodeList("PartPart", &m_Nodes, mode);
            }).Empties(m_Nodes));
        Run(On<QTBINodeRelations>("B", "GetAllLeftRelations", [&](QTBINodeRelations& node) {
                return node.GetAllLeftRelations(&m_Nodes, TRUE, mode);
            }).Appends(m_Nodes));
    }
    Run(On<QTBINodeRelations>("A", "GetFirstNodeOfEachRightPdmRelation", [&](QTBINodeRelations& node) {
            return node.GetFirstNodeOfEachRightPdmRelation(&m_Nodes);
        }).Empties(m_Nodes));
    Run(On<QTBINodeRelations>("B", "GetFirstNodeOfEachLeftPdmRelation", [&](QTBINodeRelations& node) {
            return node.GetFirstNodeOfEachLeftPdmRelation(&m_Nodes);
        }).Empties(m_Nodes));
    Run(On<QTBINodeRelations>("B", "RemoveAllRels", [&](QTBINodeRelations& node) {
            return node.RemoveAllRels(nullptr);
        }).StopsHalfWay());
    Run(On<QTBINodeRelations>("B", "RemoveAllRels to another node",
                              [&](QTBINodeRelations& node) {
                                  QTBINodeRelations_var spOther(m_spSecond);
                                  return node.RemoveAllRels(&spOther);
                              })
            .With("C")
            .StopsHalfWay()
            .Tolerates({"QTBINodeRelations::AddLeftNode", "QTBINodeRelations::AddRightNode",
                        "QTBINodeRelations::LeftNodeExists", "QTBINodeRelations::RightNodeExists"}));
    Run(On<QTBINodeRelations>("A", "SetRightNodeList", [&](QTBINodeRelations& node) {
            return node.SetRightNodeList("PartPart", CATListValCATBaseUnknown_var());
        }).StopsHalfWay());
}

} // namespace
