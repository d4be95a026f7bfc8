#pragma once

#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"

// Texts and numbers that the session, the schema, PDM answers and products share.

// Data types of the attributes of a PDM answer: the "type" of an "a" element.
QTBBASELIB_API extern const CATUnicodeString usSTRING;
QTBBASELIB_API extern const CATUnicodeString usSIMPLE_LIST;
QTBBASELIB_API extern const CATUnicodeString usNAME_VALUE_LIST;
QTBBASELIB_API extern const CATUnicodeString usTABLE;
QTBBASELIB_API extern const CATUnicodeString usOBJECT;
QTBBASELIB_API extern const CATUnicodeString usOBJECT_LIST;

// PSN node types: what a product of the CAD session is.
QTBBASELIB_API extern const CATUnicodeString usCATPRODUCT;
QTBBASELIB_API extern const CATUnicodeString usCATPART;
QTBBASELIB_API extern const CATUnicodeString usCATDRAWING;
QTBBASELIB_API extern const CATUnicodeString usCMIARCHIVE;
QTBBASELIB_API extern const CATUnicodeString usCGR;
QTBBASELIB_API extern const CATUnicodeString usDESIGNTABLE;
QTBBASELIB_API extern const CATUnicodeString usV4MODEL;
QTBBASELIB_API extern const CATUnicodeString usEMBCOMP;
QTBBASELIB_API extern const CATUnicodeString usBROKENLINK;

// Behaviour of products that need a special one: left out with all below them, or left out with their children in their
// place.
QTBBASELIB_API extern const CATUnicodeString usIGNORE_NODE;
QTBBASELIB_API extern const CATUnicodeString usSKIP_NODE;

// Directions in which a relation is followed.
QTBBASELIB_API extern const CATUnicodeString usLEFT_TO_RIGHT;
QTBBASELIB_API extern const CATUnicodeString usRIGHT_TO_LEFT;

// Synchronise contexts: the command on whose behalf products and PDM nodes are brought together.
QTBBASELIB_API extern const CATUnicodeString usLOAD_STRUCTURE;
QTBBASELIB_API extern const CATUnicodeString usOPEN_SELECTED_BNDBOX;

// How a product or document stands to the BOM part structure.
enum QTBBomType : int
{
    QTB_BOM_TYPE_INVALID = 0,
    QTB_BOM_TYPE_PART = 1,
    QTB_BOM_TYPE_AUX_FILE = 2,
    QTB_BOM_TYPE_ALL = 3
};

// Kinds of CAD files.
enum QTBCatiaFileClass : int
{
    QTB_CATIA_FILE_CLASS_UNKNOWN = 0,
    QTB_CATIA_FILE_CLASS_CATPRODUCT = 1,
    QTB_CATIA_FILE_CLASS_CATPART = 2,
    QTB_CATIA_FILE_CLASS_CATDRAWING = 3,
    QTB_CATIA_FILE_CLASS_CMIARCHIVE = 4,
    QTB_CATIA_FILE_CLASS_CGR = 5,
    QTB_CATIA_FILE_CLASS_DESIGNTABLE = 6,
    QTB_CATIA_FILE_CLASS_V4MODEL = 7
};

// The PDM systems that a schema can name.
enum QTBPdmSystem : int
{
    QTB_PDMSYSTEM_UNKNOWN = 0,
    QTB_PDMSYSTEM_ARAS_INNOVATOR = 1,
    QTB_PDMSYSTEM_ENOVIA_MATRIX = 2
};

// What the root of a tree to be highlighted is looked up by.
enum QTBRootRepNodeType : int
{
    QTB_ROOT_REP_NODE_PART = 0, // by part number
    QTB_ROOT_REP_NODE_FILE = 1  // by file name
};

// Where new relations are added in a node's list.
enum QTBPlaceToAdd : int
{
    QTB_PLACE_TO_ADD_FRONT = 0,
    QTB_PLACE_TO_ADD_END = 1
};

// Standard attributes of a product.
enum QTBPsnAttrType : int
{
    QTB_PSNATTR_PART_NUMBER = 1,
    QTB_PSNATTR_NOMENCLATURE = 2,
    QTB_PSNATTR_DESCRIPTION_REF = 3,
    QTB_PSNATTR_DEFINITION = 4,
    QTB_PSNATTR_REVISION = 5,
    QTB_PSNATTR_INSTANCE_NAME = 6,
    QTB_PSNATTR_DESCRIPTION_INST = 7,
    QTB_PSNATTR_FIRST = QTB_PSNATTR_PART_NUMBER,
    QTB_PSNATTR_LAST = QTB_PSNATTR_DESCRIPTION_INST
};

// Settings of a PDM session that are texts; the schema holds them.
enum QTBPdmSessionStringAttr : int
{
    QTB_PDM_SESSION_PART_NUMBER_ATTR = 3,   // attribute that holds a part's number
    QTB_PDM_SESSION_INSTANCE_NAME_ATTR = 4, // attribute that holds the instance names of a part-to-part relation
    QTB_PDM_SESSION_FILE_NAME_ATTR = 5,     // attribute that holds the name of a file object's file
    QTB_PDM_SESSION_PART_CLASS = 10         // class of parts
};
