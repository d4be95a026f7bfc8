#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "CATDocument.h"
#include "CATDocumentServices.h"
#include "CATIPrdLink.h"
#include "CATIProduct.h"
#include "CATPrdStructure.h"
#include "CATPrdXmlReader.h"
#include "CATProductServices.h"
#include "QTBGlobVarsUtil.h"
#include "QTBMatchers.h"
#include "QTBTestSession.h"

// Session with products beside the PDM graph. Products are found by part number and by instance names; documents are
// closed at the end of a test.
class QTBProductSession : public QTBTestSession
{
protected:
    void TearDown() override
    {
        CATDocumentServices::RemoveAll();
        QTBTestSession::TearDown();
    }

    // Opens what stands between <products directory="/data"> and </products>.
    static void Open(const std::string& content, const std::string& directory = "/data")
    {
        CATPrdStructure structure;
        const std::string xml = "<products directory=\"" + directory + "\">" + content + "</products>";
        ASSERT_THAT(CATPrdXmlReader::ReadText(CATUnicodeString(std::string_view(xml)), "text", &structure), Succeeds());
        ASSERT_THAT(CATProductServices::Open(structure, nullptr), Succeeds());
    }

    // The product at the top of a document.
    static CATIProduct_var Root(const char* partNumber)
    {
        CATIProduct_var spRoot;
        EXPECT_THAT(CATProductServices::FindRootProduct(partNumber, &spRoot), Succeeds()) << partNumber;
        return spRoot;
    }

    static CATListValCATBaseUnknown_var ChildrenOf(const CATIProduct_var& spProduct)
    {
        const std::unique_ptr<CATListValCATBaseUnknown_var> pChildren(spProduct->GetChildren("CATIProduct"));
        return *pChildren;
    }

    // The product that the instance names lead to: At("P", {"A.1", "B.1"}).
    static CATIProduct_var At(const char* partNumber, const std::vector<std::string>& instanceNames)
    {
        CATIProduct_var spProduct = Root(partNumber);
        for (const std::string& name : instanceNames) {
            CATIProduct_var spFound;
            for (const CATBaseUnknown_var& spChild : ChildrenOf(spProduct)) {
                if (spFound == NULL_var && NameOf(spChild) == name) {
                    spFound = spChild;
                }
            }
            EXPECT_TRUE(spFound != NULL_var) << name;
            spProduct = spFound;
        }
        return spProduct;
    }

    // The instance name, the part number for a reference.
    static std::string NameOf(const CATIProduct_var& spProduct)
    {
        CATUnicodeString usName;
        if (spProduct == NULL_var) {
            return "none";
        }
        return SUCCEEDED(spProduct->GetPrdInstanceName(&usName)) ? ToText(usName) : ToText(spProduct->GetPartNumber());
    }
    static std::vector<std::string> NamesOf(const CATListValCATBaseUnknown_var& products)
    {
        std::vector<std::string> names;
        for (const CATBaseUnknown_var& spProduct : products) {
            names.push_back(NameOf(spProduct));
        }
        return names;
    }

    // The document that holds the product's reference.
    static CATDocument* DocumentOf(const CATIProduct_var& spProduct)
    {
        CATDocument* pDocument = nullptr;
        EXPECT_THAT(CATIPrdLink_var(spProduct)->GetDocument(&pDocument), Succeeds());
        return pDocument;
    }

    // Pieces of a PDM answer.
    static std::string NumberedPart(std::string_view key, std::string_view partNumber,
                                    std::string_view className = "Part", const std::string& further = "")
    {
        return Object(className, key, Attribute("PartNumber", partNumber) + further);
    }
    static std::string File(std::string_view className, std::string_view key, std::string_view fileName,
                            const std::string& further = "")
    {
        return Object(className, key, Attribute("FileName", fileName) + further);
    }
    static std::string Usage(std::string_view key, std::string_view leftKey, std::string_view rightKey,
                             std::string_view instanceName)
    {
        return PartPart(key, leftKey, rightKey, Attribute("InstanceName", instanceName));
    }

    // Texts of the information list.
    static std::vector<std::string> InfoList()
    {
        CATListValQTBInfoListEntry entries;
        EXPECT_THAT(QTBGlobVarsUtil::GetInfoListEntries(&entries), Succeeds());
        std::vector<std::string> texts;
        for (const QTBInfoListEntry& entry : entries) {
            texts.push_back(ToText(entry.text));
        }
        return texts;
    }

    static std::string ToText(const CATUnicodeString& text) { return std::string(text.View()); }
};
