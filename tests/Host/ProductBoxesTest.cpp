// Bounding boxes of assemblies, listed and drawn.

#include "ProductBoxes.h"

#include <png.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>

#include <gmock/gmock.h>

#include "BoxView.h"
#include "BoxesCommand.h"
#include "CAT3DCuboidRep.h"
#include "HostError.h"
#include "HostSession.h"
#include "QTBTestFolder.h"
#include "Shell.h"

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

constexpr LineImage::Color WHITE{255, 255, 255};

class Boxes : public ::testing::Test
{
protected:
    // An assembly with two places of a part: one moved by 10 along x, the other besides turned by 90 degrees about z.
    std::string WriteAssembly(const std::string& box = "0 0 0 4 2 1") const
    {
        return m_Folder.Write("assembly.xml", R"(<products>
<product id="a" file="a.CATProduct" partNumber="A">
  <instance of="p" name="P.1"><property name="Placement">1 0 0 0 1 0 0 0 1 10 0 0</property></instance>
  <instance of="s" name="S.1"><property name="Placement">1 0 0 0 1 0 0 0 1 10 0 0</property></instance>
</product>
<product id="s" file="s.CATProduct" partNumber="S">
  <instance of="p" name="P.1"><property name="Placement">0 1 0 -1 0 0 0 0 1 0 0 5</property></instance>
  <instance of="e" name="E.1"/>
</product>
<product id="p" file="p.CATPart" partNumber="P"><property name="BoundingBox">)" +
                                                  box + R"(</property></product>
<product id="e" file="e.CATPart" partNumber="E"/>
</products>)");
    }

    static std::string Refusal(const BoxesOptions& options, ExitCode exitCode)
    {
        try {
            RunBoxes(options);
        } catch (const HostError& error) {
            EXPECT_EQ(error.GetExitCode(), exitCode) << error.what();
            return error.what();
        }
        return "not refused";
    }

    QTBTestFolder m_Folder;
};

} // namespace

TEST_F(Boxes, StandWhereTheirProductsAreAndTurnWithThem)
{
    HostSession session("", "");
    ProductBoxes::Show(session.OpenAssembly(WriteAssembly()));
    EXPECT_EQ(ProductBoxes::Describe(ProductBoxes::Collect()), "[1] (10, 0, 0) - (14, 2, 1)  P.1\n"
                                                               "[2] (10, 0, 5) - (8, 4, 6)  S.1/P.1\n");
}

TEST_F(Boxes, OfARealAssemblyComeFromItsProductStructure)
{
    HostSession session("", "");
    const CATListValCATBaseUnknown_var documents = session.OpenAssembly(QTB_SOURCE_DIR "/examples/as1/products.xml");
    ProductBoxes::Show(documents);
    ProductBoxes::Show(documents);
    const std::vector<ProductBoxes::Shown> boxes = ProductBoxes::Collect();
    // 3 in the rod assembly, 7 in each bracket assembly, the plate.
    ASSERT_EQ(boxes.size(), 18U) << "shown twice, made once";
    EXPECT_EQ(boxes[10].name, "plate_1");
    EXPECT_THAT(ProductBoxes::Describe(boxes), HasSubstr("[11] (0, 0, 0) - (180, 150, 20)  plate_1\n"));
}

TEST_F(Boxes, AreMarkedInTheShellByNumberNameAndMenu)
{
    HostSession session("", "");
    std::ostringstream output;
    Shell shell(session, output);
    const auto run = [&](const std::string& line) {
        output.str("");
        shell.Execute(line);
        return output.str();
    };
    EXPECT_EQ(run("boxes"), "0 boxes\n");
    EXPECT_EQ(run("mark 1"), "error: there is no bounding box 1; boxes lists them\n");
    EXPECT_EQ(run("assembly " + WriteAssembly() + " box"), "error: usage: assembly FILE [boxes]\n");
    EXPECT_EQ(run("assembly " + WriteAssembly()), "");
    EXPECT_EQ(run("mark 2"), "");
    EXPECT_EQ(run("boxes"), "[1] (10, 0, 0) - (14, 2, 1)  P.1\n[2] (10, 0, 5) - (8, 4, 6)  S.1/P.1  <== marked\n");
    EXPECT_EQ(run("unmark S.1/P.1"), "");
    EXPECT_EQ(run("boxmenu P.1"), "----\n[1] Mark Bounding Box\n[2] Unmark Bounding Box\n");
    EXPECT_EQ(run("pick 1"), "Mark Bounding Box: done\n");
    EXPECT_EQ(run("boxes"), "[1] (10, 0, 0) - (14, 2, 1)  P.1  <== marked\n[2] (10, 0, 5) - (8, 4, 6)  S.1/P.1\n");
    EXPECT_EQ(run("boxmenu 3"), "error: there is no bounding box 3; boxes lists them\n");
    EXPECT_EQ(run("picture /no/such/folder/boxes.png").substr(0, 6), "error:");
    EXPECT_EQ(run("picture " + m_Folder.GetPath("boxes.png")), "");
    EXPECT_GT(fs::file_size(m_Folder.GetPath("boxes.png")), 1000U);
    // The boxes go with the window of their assembly; the open menu still holds one.
    run("window 2");
    EXPECT_EQ(run("close"), "");
    EXPECT_EQ(run("boxes"), "0 boxes\n");
}

TEST_F(Boxes, ThatAreNoNumbersAreRefusedWithTheirProduct)
{
    BoxesOptions options;
    for (const char* box : {"", "1 2 3", "0 0 0 1 1 x", "0 0 0 1 1 1 1", "0 0 0 1 1 inf", "0 0 0 1 1 nan"}) {
        options.assembly = WriteAssembly(box);
        EXPECT_EQ(Refusal(options, ExitCode::BadInput),
                  "P.1: the property BoundingBox is \"" + std::string(box) + "\"; expected were 6 numbers");
    }
    options.assembly =
        m_Folder.Write("none.xml", R"(<products><product id="a" file="a.CATPart" partNumber="A"/></products>)");
    EXPECT_THAT(Refusal(options, ExitCode::BadInput), HasSubstr("has no boxes"));
    options.assembly = WriteAssembly();
    options.marks = {"no/such/path"};
    EXPECT_THAT(Refusal(options, ExitCode::Usage), HasSubstr("--mark no/such/path"));
}

TEST_F(Boxes, CommandListsMarksAndDraws)
{
    BoxesOptions options;
    options.assembly = WriteAssembly();
    options.marks = {"S.1"};
    options.png = m_Folder.GetPath("boxes.png");
    options.size = 64;
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(RunBoxes(options), 0);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "[1] (10, 0, 0) - (14, 2, 1)  P.1\n"
                                                        "[2] (10, 0, 5) - (8, 4, 6)  S.1/P.1  <== marked\n");
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_NE(png_image_begin_read_from_file(&image, options.png.c_str()), 0) << image.message;
    EXPECT_EQ(image.width, 64U);
    EXPECT_EQ(image.height, 64U);
    image.format = PNG_FORMAT_RGB;
    std::vector<std::uint8_t> pixels(PNG_IMAGE_SIZE(image));
    ASSERT_NE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr), 0);
    int red = 0;
    int blue = 0;
    for (std::size_t i = 0; i < pixels.size(); i += 3) {
        red += pixels[i] > pixels[i + 2] + 60 ? 1 : 0;
        blue += pixels[i + 2] > pixels[i] + 60 ? 1 : 0;
    }
    EXPECT_GT(red, 30) << "the marked box";
    EXPECT_GT(blue, 30) << "the other one";
}

TEST(BoxView, DrawsTheTwelveEdgesOfACuboidSeenFromTheFrontRightAbove)
{
    const CAT3DCuboidRep rep({0, 0, 0}, {10, 0, 0}, {0, 10, 0}, {0, 0, 10}, CAT3DCuboidRep::Edges);
    CATVisuItem item{};
    item.pRep = &rep;
    item.color = 245;
    BoxView view(200);
    view.Add(item);
    const LineImage image = view.Draw();
    // A cube is a hexagon with its nearest and its farthest corner in the middle: 184 pixels high, 4 percent margin.
    const auto isDrawn = [&image](int x, int y) { return !(image.GetPixel(x, y) == WHITE); };
    EXPECT_TRUE(isDrawn(100, 8)) << "back corner at the top";
    EXPECT_TRUE(isDrawn(100, 192)) << "front corner at the bottom";
    EXPECT_TRUE(isDrawn(100, 100)) << "the middle";
    for (const int x : {20, 180}) {
        EXPECT_TRUE(isDrawn(x, 100)) << "the upright edges at the sides";
    }
    EXPECT_EQ(image.GetPixel(100, 60), BoxView::GetColor(245)) << "the upright edge behind";
    EXPECT_FALSE(isDrawn(60, 100)) << "nothing inside of a face";
    EXPECT_FALSE(isDrawn(4, 4));
    EXPECT_FALSE(BoxView::GetColor(244) == BoxView::GetColor(245));
}

TEST(BoxView, DrawsAnythingWithoutFailing)
{
    constexpr double HUGE_NUMBER = 1e300;
    for (const double size : {0.0, 1e-300, HUGE_NUMBER}) {
        const CAT3DCuboidRep rep({size, -size, 0}, {size, 0, 0}, {0, size, 0}, {0, 0, size}, CAT3DCuboidRep::Edges);
        CATVisuItem item{};
        item.pRep = &rep;
        BoxView view(32);
        view.Add(item);
        view.Add(CATVisuItem{});
        EXPECT_EQ(view.Draw().GetWidth(), 32);
    }
    EXPECT_EQ(BoxView(32).Draw().GetPixel(16, 16), WHITE) << "no box at all";
}

TEST(LineImage, APictureThatCannotBeWrittenLeavesTheOldOne)
{
    const QTBTestFolder folder;
    const std::string path = folder.Write("picture.png", "old");
    const pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
        // No file may become longer than this, which is how a full disk looks to a program.
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {10, 10};
        setrlimit(RLIMIT_FSIZE, &limit);
        try {
            LineImage(20, 10).WritePng(path);
        } catch (const HostError& error) {
            _exit(std::string(error.what()).find("picture.png cannot be written to: ") != std::string::npos ? 0 : 1);
        }
        _exit(2);
    }
    int status = 0;
    ASSERT_EQ(waitpid(pid, &status, 0), pid);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    std::ifstream file(path);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()), "old");
}

TEST(LineImage, LinesAreCutAtTheBorderAndEndWhereTheyShould)
{
    constexpr LineImage::Color BLACK{0, 0, 0};
    LineImage image(20, 10);
    image.DrawLine(-1e9, 5, 1e9, 5, 1, BLACK);
    for (int x = 0; x < 20; ++x) {
        EXPECT_EQ(image.GetPixel(x, 5), BLACK) << x;
        EXPECT_EQ(image.GetPixel(x, 3), WHITE);
    }
    image.DrawLine(3, 2, 3, 2, 1, BLACK);
    EXPECT_EQ(image.GetPixel(3, 2), BLACK) << "a point";
    image.DrawLine(0, -5, 20, -5, 1, BLACK);
    image.DrawLine(0, 1, std::nan(""), 1, 1, BLACK);
    EXPECT_EQ(image.GetPixel(10, 1), WHITE);
    image.DrawLine(10, 0, 10, 1, 1, BLACK);
    EXPECT_EQ(image.GetPixel(10, 0), BLACK);
    EXPECT_EQ(image.GetPixel(10, 3), WHITE);
}
