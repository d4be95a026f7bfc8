#pragma once

#include <gtest/gtest.h>

#include "CATInstantiateComponent.h"
#include "CATInterface_var.h"
#include "QTBIBndBox.h"

// A bounding box made by its late type name, and no component left at the end of a test.
class QTBBndBoxTestBox : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_ComponentsBefore = CATBaseUnknown::GetLiveComponentCount();
        m_spBox = Create();
        m_spIBndBox = m_spBox;
        ASSERT_TRUE(m_spIBndBox != NULL_var);
    }
    void TearDown() override
    {
        m_spIBndBox = NULL_var;
        m_spBox = NULL_var;
        EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_ComponentsBefore);
    }

    static CATBaseUnknown_var Create()
    {
        void* pBox = nullptr;
        EXPECT_EQ(::CATInstantiateComponent("QTBBndBox", CLSID_CATBaseUnknown, &pBox), S_OK);
        return CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pBox));
    }

    CATBaseUnknown_var m_spBox;
    QTBIBndBox_var m_spIBndBox;

private:
    int m_ComponentsBefore = 0;
};
