#pragma once

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "CATIDOMElement.h"
#include "CATUnicodeString.h"
#include "QTBXmlUtil.h"

// The document element of a text; the test fails when the text cannot be read.
inline CATIDOMElement_var ReadXmlElement(std::string_view xml)
{
    CATIDOMDocument_var spDocument;
    CATIDOMElement_var spElement;
    EXPECT_EQ(QTBXmlUtil::GetDomDocument(CATUnicodeString(xml), &spDocument), S_OK) << xml;
    if (spDocument != NULL_var) {
        EXPECT_EQ(spDocument->GetDocumentElement(&spElement), S_OK);
    }
    return spElement;
}

// The attribute as it is written; the test fails when it is not.
template <class Attribute>
std::string WriteAttribute(const Attribute& attribute)
{
    CATUnicodeString usXml;
    EXPECT_EQ(attribute.WriteXmlToString(&usXml, FALSE), S_OK);
    return usXml.ConvertToChar();
}

// A text with everything that is hard to carry through XML.
inline constexpr const char* AWKWARD_TEXT =
    " \t<a name=\"x\"> & 'b' &amp; ]]>\r\n\xC3\xA4\xC3\xB6\xC3\xBC \xD0\x96 \xE6\x97\xA5\xE6\x9C\xAC "
    "\xF0\x9F\x98\x80\r \n";
