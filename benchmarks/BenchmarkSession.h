#pragma once

#include <string>

#include "CATInterface_var.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIRepNode.h"
#include "QTBIRepNodeCont.h"

// A session for one benchmark: schema and catalogs of the project, an empty PDM graph. Ends with the object.
class BenchmarkSession
{
public:
    BenchmarkSession();
    BenchmarkSession(const BenchmarkSession&) = delete;
    BenchmarkSession& operator=(const BenchmarkSession&) = delete;
    ~BenchmarkSession();

    QTBIPdmNodeCont_var GetPdmNodeCont() const { return m_spIPdmNodeCont; }

    CATBaseUnknown_var CreateObject(const char* key) const;

    // Reads the answer into the graph; ends the program when that fails, since nothing else would be measured.
    void Update(const std::string& xml) const;

private:
    QTBIPdmNodeCont_var m_spIPdmNodeCont;
};
