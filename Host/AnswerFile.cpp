#include "AnswerFile.h"

#include <fstream>
#include <iterator>

#include "CATXMLStrictElement.h"
#include "CATXMLTextCheck.h"
#include "HostSession.h"
#include "QTBXmlUtil.h"

namespace {

const CATUnicodeString EXPECTED("a PDM answer: a document element with one element \"function\" in it");

// What keeps the document from being an answer, and where; an empty text for an answer.
CATUnicodeString FindFault(const CATDOMElementView& root, CATDOMElementView* pPlace)
{
    *pPlace = root;
    int count = 0;
    for (CATDOMElementView child = root.GetFirstChild(); child; child = child.GetNextSibling()) {
        if (child.HasTagName("function") && ++count == 2) {
            *pPlace = child;
            return "there is a second element \"function\"";
        }
    }
    if (count == 1) {
        return CATUnicodeString();
    }
    // The files that are likely to be taken for answers.
    if (root.HasTagName("products")) {
        return "the file is a product structure";
    }
    if (root.HasTagName("qtbSchema")) {
        return "the file is a PDM schema";
    }
    return "there is no element \"function\" in " + CATXMLStrictElement::Quote(root.GetTagName());
}

} // namespace

CATIDOMDocument_var AnswerFile::Read(const std::string& path)
{
    HostSession::RequireFile(path, "answer");
    CATIDOMDocument_var spAnswer;
    HostSession::Require(QTBXmlUtil::GetDomDocumentFromFile(path.c_str(), &spAnswer), ExitCode::BadInput, "answer");
    CATIDOMElement_var spRoot;
    HostSession::Require(spAnswer->GetDocumentElement(&spRoot), ExitCode::BadInput, "answer " + path);
    CATDOMElementView place;
    const CATUnicodeString problem = FindFault(spRoot->GetView(), &place);
    if (!problem.IsEmpty()) {
        // Lines are those of the text, which is read again to count them.
        std::ifstream stream(path, std::ios::binary);
        std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        HostSession::Require(CATXMLTextCheck::DecodeBytes(path.c_str(), &text), ExitCode::BadInput, "answer");
        HostSession::Require(
            CATXMLTextCheck::Refuse(text, CATXMLStrictElement(place).GetOffset(), path.c_str(), problem, EXPECTED),
            ExitCode::BadInput, "answer");
    }
    return spAnswer;
}
