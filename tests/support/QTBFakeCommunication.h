#pragma once

#include <string>
#include <vector>

#include "CATIDOMDocument.h"
#include "QTBCommUtil.h"
#include "QTBICommunicationServices.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmObjNode.h"
#include "QTBTestLateType.h"
#include "QTBXmlUtil.h"
#include "TIEQTBICommunicationServices.h"

// A PDM system that answers what the test says and writes down what it was asked. Connected to the session while the
// object lives.
class QTBFakeCommunication
{
public:
    QTBFakeCommunication()
    {
        s_Calls.clear();
        s_bFails = false;
        s_Answer.clear();
        m_Type.Register<TIEQTBICommunicationServices, QTBICommunicationServices, Extension>();
        QTBCommUtil::SetCommComponent(m_Type.Create());
    }
    QTBFakeCommunication(const QTBFakeCommunication&) = delete;
    QTBFakeCommunication& operator=(const QTBFakeCommunication&) = delete;
    ~QTBFakeCommunication() { QTBCommUtil::SetCommComponent(NULL_var); }

    static const std::vector<std::string>& Calls() { return s_Calls; }
    static void Refuse() { s_bFails = true; }
    static void AnswerWith(const std::string& xml) { s_Answer = xml; }

private:
    class Extension : public CATBaseUnknown
    {
    public:
        HRESULT CreateRelation(const CATUnicodeString& usRelationClass, const QTBIPdmObjNode_var& spLeftObject,
                               const QTBIPdmObjNode_var& spRightObject, const CATUnicodeString& usRelationXml,
                               CATIDOMDocument_var* pspAnswer)
        {
            s_Calls.push_back("CreateRelation(" + std::string(usRelationClass.View()) + ", " + KeyOf(spLeftObject) +
                              ", " + KeyOf(spRightObject) + ", " + std::string(usRelationXml.View()) + ")");
            return s_bFails ? E_FAIL : QTBXmlUtil::GetDomDocument(CATUnicodeString(s_Answer), pspAnswer);
        }

        HRESULT Delete(const QTBINodeAttributes_var& spItem, const CATUnicodeString* pusDeleteOption)
        {
            s_Calls.push_back("Delete(" + KeyOf(spItem) +
                              (pusDeleteOption != nullptr ? ", " + std::string(pusDeleteOption->View()) : "") + ")");
            return s_bFails ? E_FAIL : S_OK;
        }
    };

    static std::string KeyOf(const QTBINodeAttributes_var& spItem)
    {
        CATUnicodeString usKey;
        if (spItem != NULL_var) {
            spItem->GetKey(&usKey);
        }
        return std::string(usKey.View());
    }

    inline static std::vector<std::string> s_Calls;
    inline static bool s_bFails = false;
    inline static std::string s_Answer;

    QTBTestLateType m_Type{"QTBFakeCommunication"};
};
