#include "platform/draw/RecordingContext.h"

#include "platform/draw/NSStringDrawing.h"
#include "platform/draw/UIImage.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

TEST(RecordingContext, WritesEveryOperationAsOneLineInOrder) {
    RecordingContext context;
    const GraphicsScope scope(context);
    context.saveGState();
    context.translateCTM(83.5, 94);
    context.scaleCTM(1.5, 1.5);
    context.rotateCTM(-0.25);
    context.clipToRect(CGRectMake(-45, -45, 90, 90));
    context.setLineDash(0, {2, 3});
    UIColor(0.753, 0.753, 0.753, 1).setStroke();
    UIColor(0.76, 0.29, 0.29, 0.3).setFill();
    UIBezierPath path;
    path.moveToPoint({0, -18});
    path.addLineToPoint({0, 0});
    path.setLineWidth(4);
    path.setLineCapStyle(CGLineCap::round);
    path.setLineJoinStyle(CGLineJoin::bevel);
    path.stroke();
    UIBezierPath::bezierPathWithOvalInRect(CGRectMake(1, 2, 3, 4)).fill();
    NSMutableParagraphStyle centred;
    centred.setAlignment(NSTextAlignment::center);
    drawInRect("50", CGRectMake(9, 76, 73, 9),
               {.font = UIFont::systemFontOfSize(10),
                .foregroundColor = UIColor::whiteColor(),
                .paragraphStyle = centred});
    UIImage(2, 1, 1.0, {}).drawInRect(CGRectMake(0, 0, 4, 2));
    context.restoreGState();
    EXPECT_EQ(context.text(),
              "save\n"
              "translate 83.5 94\n"
              "scale 1.5 1.5\n"
              "rotate -0.25\n"
              "clip -45 -45 90 90\n"
              "dash phase 0 lengths 2 3\n"
              "stroke path move 0 -18 line 0 0 width 4 cap round join bevel color 0.753 0.753 0.753 1\n"
              "fill oval 1 2 3 4 color 0.76 0.29 0.29 0.3\n"
              "text \"50\" at 9 76 width 73 font system 10 align center color 1 1 1 1\n"
              "image 2 1 in 0 0 4 2\n"
              "restore\n");
}

TEST(RecordingContext, WritesWhatCannotBeSeenToo) {
    RecordingContext context;
    const GraphicsScope scope(context);
    context.scaleCTM(0, 0);
    UIBezierPath::bezierPathWithRect(CGRectMake(0, 0, 1, 1)).fill();
    EXPECT_EQ(context.lines().back(), "fill rect 0 0 1 1 color 0 0 0 1");
}

} // namespace
