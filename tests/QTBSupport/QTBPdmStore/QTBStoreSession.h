#pragma once

#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "CATError.h"
#include "CATIDOMDocument.h"
#include "QTBMatchers.h"
#include "QTBPdmStore.h"
#include "QTBTestFolder.h"
#include "QTBTestSession.h"
#include "QTBXmlUtil.h"

// A session and an empty store in a folder of its own. The store is opened for the user "kim"; what a request answered
// last is at hand.
class QTBStoreSession : public QTBTestSession
{
protected:
    using Keys = QTBPdmStore::Keys;

    void SetUp() override
    {
        QTBTestSession::SetUp();
        ASSERT_THAT(QTBPdmStore::Create(Path().c_str()), Succeeds());
        m_pStore = OpenFor("kim");
    }

    void TearDown() override
    {
        m_pStore.reset();
        QTBTestSession::TearDown();
    }

    std::string Path() const { return m_Folder.GetPath("pdm.store"); }
    std::string PathOf(const std::string& name) const { return m_Folder.GetPath(name); }

    std::unique_ptr<QTBPdmStore> OpenFor(const char* user) const
    {
        std::unique_ptr<QTBPdmStore> pStore;
        EXPECT_THAT(QTBPdmStore::Open(Path().c_str(), MakeOptions(user), &pStore), Succeeds());
        return pStore;
    }
    static QTBPdmStore::Options MakeOptions(const char* user = "kim")
    {
        QTBPdmStore::Options options;
        options.user = user;
        options.busyTimeoutInMs = 200;
        return options;
    }

    // Requests of the store, or of another one; the answer is in m_Answer when they succeed.
    template <class Request>
    HRESULT Ask(Request request)
    {
        std::string answer;
        const HRESULT hr = request([&answer](std::string_view piece) { answer.append(piece); });
        if (SUCCEEDED(hr)) {
            m_Answer = answer;
        }
        return hr;
    }
    HRESULT Get(const Keys& keys)
    {
        return Ask([&](const QTBPdmStore::Receiver& receiver) { return m_pStore->GetItems(keys, receiver); });
    }
    HRESULT Query(const QTBStoreQuery& query)
    {
        return Ask([&](const QTBPdmStore::Receiver& receiver) { return m_pStore->Query(query, receiver); });
    }
    HRESULT Expand(const Keys& keys, const std::vector<QTBStoreExpansion::Relation>& relations, int levels = -1)
    {
        return Ask([&](const QTBPdmStore::Receiver& receiver) {
            return m_pStore->Expand({keys, relations, levels}, receiver);
        });
    }
    HRESULT Export(bool newestVersionsOnly)
    {
        return Ask(
            [&](const QTBPdmStore::Receiver& receiver) { return m_pStore->Export(newestVersionsOnly, receiver); });
    }
    HRESULT Invoke(const char* function, const QTBPdmStore::Arguments& arguments)
    {
        return Ask(
            [&](const QTBPdmStore::Receiver& receiver) { return m_pStore->Invoke(function, arguments, receiver); });
    }
    HRESULT CheckOut(const Keys& keys)
    {
        return Ask([&](const QTBPdmStore::Receiver& receiver) { return m_pStore->CheckOut(keys, receiver); });
    }
    HRESULT CheckIn(const Keys& keys, const std::vector<std::string>& paths = {})
    {
        return Ask([&](const QTBPdmStore::Receiver& receiver) { return m_pStore->CheckIn(keys, paths, receiver); });
    }
    HRESULT Promote(const Keys& keys)
    {
        return Ask([&](const QTBPdmStore::Receiver& receiver) { return m_pStore->Promote(keys, receiver); });
    }
    HRESULT Revise(const Keys& keys)
    {
        return Ask([&](const QTBPdmStore::Receiver& receiver) { return m_pStore->Revise(keys, receiver); });
    }
    HRESULT UpdateAttributes(const char* key, const std::string& xml)
    {
        return Ask([&](const QTBPdmStore::Receiver& receiver) {
            return m_pStore->UpdateAttributes(key, CATUnicodeString(std::string_view{xml}), receiver);
        });
    }
    HRESULT CreateObject(const char* className, const char* key, const std::string& xml = "")
    {
        return Ask([&](const QTBPdmStore::Receiver& receiver) {
            return m_pStore->CreateObject(className, key, CATUnicodeString(std::string_view{xml}), receiver);
        });
    }
    HRESULT Relate(const char* className, const char* left, const char* right, const std::string& xml = "")
    {
        return Ask([&](const QTBPdmStore::Receiver& receiver) {
            return m_pStore->CreateRelation(className, left, right, CATUnicodeString(std::string_view{xml}), receiver);
        });
    }
    HRESULT Delete(const Keys& keys, const char* option = "")
    {
        return Ask([&](const QTBPdmStore::Receiver& receiver) { return m_pStore->Delete(keys, option, receiver); });
    }

    // Takes in an answer, whole.
    HRESULT ImportAnswer(const std::string& answer, const std::string& fileFolder = "")
    {
        CATIDOMDocument_var spAnswer;
        EXPECT_THAT(QTBXmlUtil::GetDomDocument(CATUnicodeString(std::string_view{answer}), &spAnswer), Succeeds());
        m_Report = QTBStoreImportReport();
        return m_pStore->Import(spAnswer, fileFolder, &m_Report);
    }
    // Takes in items, which must succeed.
    void Import(const std::string& items) { ASSERT_THAT(ImportAnswer(Answer(items)), Succeeds()); }

    // What the answer has, in its order: "o KEY", "r KEY LEFT>RIGHT", "objectToDelete KEY", "relationToDelete KEY".
    std::vector<std::string> Items() const { return ItemsOf(m_Answer); }
    static std::vector<std::string> ItemsOf(const std::string& answer)
    {
        CATIDOMDocument_var spAnswer;
        EXPECT_THAT(QTBXmlUtil::GetDomDocument(CATUnicodeString(std::string_view{answer}), &spAnswer), Succeeds());
        std::vector<std::string> items;
        CATIDOMElement_var spRoot;
        if (spAnswer == NULL_var || FAILED(spAnswer->GetDocumentElement(&spRoot))) {
            return items;
        }
        const CATDOMElementView root = spRoot->GetView();
        for (CATDOMElementView element = root.GetFirstChild(); element; element = element.GetNextBelow(root)) {
            const std::string tag(element.GetTagName());
            if (tag == "o") {
                items.push_back("o " + AttributeIn(element, "Key"));
            } else if (tag == "r") {
                items.push_back("r " + AttributeIn(element, "Key") + " " + AttributeIn(element, "Left") + ">" +
                                AttributeIn(element, "Right"));
            } else if (tag == "objectToDelete" || tag == "relationToDelete") {
                items.push_back(tag + " " + std::string(element.GetText().View()));
            }
        }
        return items;
    }
    static std::string AttributeIn(const CATDOMElementView& item, std::string_view name)
    {
        for (CATDOMElementView child = item.GetFirstChild(); child; child = child.GetNextSibling()) {
            if (child.HasTagName("a") && child.FindAttribute("name").GetValue() == name) {
                return std::string(child.GetText().View());
            }
        }
        return "not defined";
    }
    // The entry of "QtbInfo" that an item of the last answer has.
    std::string InfoIn(const std::string& key, std::string_view entry) const
    {
        CATIDOMDocument_var spAnswer;
        CATIDOMElement_var spRoot;
        EXPECT_THAT(QTBXmlUtil::GetDomDocument(CATUnicodeString(std::string_view{m_Answer}), &spAnswer), Succeeds());
        spAnswer->GetDocumentElement(&spRoot);
        const CATDOMElementView root = spRoot->GetView();
        for (CATDOMElementView item = root.GetFirstChild(); item; item = item.GetNextBelow(root)) {
            if ((item.HasTagName("o") || item.HasTagName("r")) && AttributeIn(item, "Key") == key) {
                for (CATDOMElementView child = item.GetFirstChild(); child; child = child.GetNextSibling()) {
                    if (child.HasTagName("a") && child.FindAttribute("name").GetValue() == "QtbInfo") {
                        for (CATDOMElementView nv = child.GetFirstChild(); nv; nv = nv.GetNextSibling()) {
                            if (nv.FindAttribute("name").GetValue() == entry) {
                                return std::string(nv.GetText().View());
                            }
                        }
                    }
                }
                return "not defined";
            }
        }
        return "no item";
    }

    // The whole store as an answer, to compare.
    std::string Dump()
    {
        std::string dump;
        EXPECT_THAT(m_pStore->Export(false, [&dump](std::string_view piece) { dump.append(piece); }), Succeeds());
        return dump;
    }

    // Faults that the store's own check finds.
    std::vector<std::string> Faults()
    {
        CATListValCATUnicodeString faults;
        EXPECT_THAT(m_pStore->Check(&faults), Succeeds());
        return TextsOf(faults);
    }

    // What a failed request tells the user.
    static std::string MessageOf(HRESULT hr)
    {
        const CATError* pError = CATError::CATGetLastError(hr, nullptr);
        return pError != nullptr ? std::string(pError->GetNLSMessage().View()) : "no message";
    }

    static std::string ReadFile(const std::string& path)
    {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    std::string WriteFile(const std::string& name, const std::string& content) const
    {
        std::ofstream(PathOf(name), std::ios::binary) << content;
        return PathOf(name);
    }

    static inline const std::vector<QTBStoreExpansion::Relation> PARTS = {{"PartPart", true}};
    static inline const std::vector<QTBStoreExpansion::Relation> USES = {{"PartPart", false}};

    // Every change would wait for the disk.
    QTBTestFolder m_Folder{QTBTestFolder::GetFastParent()};
    std::unique_ptr<QTBPdmStore> m_pStore;
    std::string m_Answer;
    QTBStoreImportReport m_Report;
};
