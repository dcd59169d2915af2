#include <QGroupBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTextDocument>
#include <algorithm>

#include "editor/EditGridView.h"
#include "editor/NEditForm.h"
#include "widgets/DragBar.h"
#include "widgets/FindBar.h"
#include "widgets/ScreenFit.h"
#include "widgets/SeriesTabs.h"
#include "widgets/StateFile.h"
#include "widgets/WindowGeometry.h"

namespace quenmar {

namespace {

constexpr const char* kCommentsHeight = "NEditForm/CommentsHeight";  // in the state file

constexpr int kCommentLines = 4;   // more would leave the series no room in the smallest window
constexpr int kFewestRows = 3;     // of the grid, which a high comments box leaves
constexpr int kFirstHeight = 600;  // logical pixels
constexpr int kBottomMargin = 90;  // twips below the buttons, as at the sides

/// @return the smallest number of pixels that are no fewer twips.
constexpr int PixelsFor(int twips) { return (twips + kTwipsPerPixel - 1) / kTwipsPerPixel; }

LayoutSize Twips(QSize pixels) { return {ToTwips(pixels.width()), ToTwips(pixels.height())}; }

void Place(QWidget& widget, const LayoutRectangle& twips, QPoint offset = {}) {
  const LayoutRectangle pixels = ToPixels(twips);
  widget.setGeometry(
      QRect(pixels.left, pixels.top, pixels.width, pixels.height).translated(offset));
}

}  // namespace

void NEditForm::SetUpSize() {
  xEDG_->RememberColumns(objectName());
  commentsHeight_ = StateFile().value(kCommentsHeight).toInt();
  setMinimumSize(PixelsFor(EditorLayout::kSmallestWindow.width),
                 PixelsFor(EditorLayout::kSmallestWindow.height));
  const EditorLayout empty = EditorLayout::Of({}, 0, {}, {}, mode_);
  const int besideGrid = PixelsFor(empty.window.width - empty.xEDG.width);
  resize(xEDG_->FullWidth() + besideGrid, kFirstHeight);
  new WindowGeometry(this, "NEditForm");
  if (!isMaximized() && !isFullScreen()) resize(size().boundedTo(LargestSize(*this)));
}

void NEditForm::WantHeight(int height) {
  setMinimumHeight(std::max(std::min(height, LargestSize(*this).height()),
                            PixelsFor(EditorLayout::kSmallestWindow.height)));
}

int NEditForm::CommentsHeight(int lines) const {
  const int margins = comments_->frameWidth() + qRound(comments_->document()->documentMargin());
  return ToTwips(lines * comments_->fontMetrics().lineSpacing() + 2 * margins);
}

int NEditForm::TabsHeight() const { return ToTwips(2 * series_->tabBar()->sizeHint().height()); }

EditorLayout NEditForm::LayoutFor(int height) const {
  const int findHeight = find_->IsOpen() ? ToTwips(find_->sizeHint().height()) : 0;
  const auto with = [this, height, findHeight](int comments) {
    return EditorLayout::Of(Twips({width(), height}), comments, Twips(apply_->sizeHint()),
                            Twips(close_->sizeHint()), mode_, findHeight);
  };
  // In a small window or a large font the comments leave room for the tabs and one entry, and where
  // the user has made them high, for some rows.
  int wanted = CommentsHeight(kCommentLines);
  if (commentsHeight_ > wanted) {
    const int rows = ToTwips(xEDG_->HeightOf(kFewestRows));
    const int room = mode_ == LayoutMode::kSettings ? with(0).xEDG.height - rows : commentsHeight_;
    wanted = std::max(wanted, std::min(commentsHeight_, room));
  }
  EditorLayout layout = with(wanted);
  if (mode_ == LayoutMode::kSettings) return layout;
  const int tabs = TabsHeight();
  for (int lines = wanted / ToTwips(comments_->fontMetrics().lineSpacing());
       lines > 0 && layout.TSeries.height < tabs; --lines) {
    layout = with(std::min(wanted, CommentsHeight(lines)));
  }
  return layout;
}

void NEditForm::LayOut() {
  EditorLayout layout = LayoutFor(height());
  if (const int lacking = TabsHeight() - layout.TSeries.height;
      mode_ != LayoutMode::kSettings && lacking > 0) {
    // The tabs get no less than 13 of 30 parts of what the window grows by.
    const QSize before = size();
    WantHeight(height() + PixelsFor(lacking * 30 / 13));
    if (size() != before) return;  // the resize event has laid it out
  }
  Place(*frame_, layout.Frame1);
  // How high the frame's caption is depends on style and font, and so does what is left for the
  // buttons: where it is too little, all above them gets lower.
  const int caption = std::min(frame_->contentsRect().top(), frame_->fontMetrics().height() + 1);
  const QPoint inFrame(0, std::max(0, caption - ToPixels(EditorLayout::kGridTop)));
  const int cutOff = frame_->y() + inFrame.y() + ToPixels(layout.Command3.Bottom()) +
                     PixelsFor(kBottomMargin) - height();
  if (cutOff > 0) {
    WantHeight(PixelsFor(EditorLayout::kSmallestWindow.height) + cutOff);
    layout = LayoutFor(height() - cutOff);
  }
  Place(*find_, layout.pnlFind, inFrame);
  Place(*xEDG_, layout.xEDG, inFrame);
  Place(*comments_, layout.Comments, inFrame);
  Place(*series_, layout.TSeries, inFrame);
  LayDragBar();
  series_->SetListSize({ToPixels(layout.lstSeries.width), ToPixels(layout.lstSeries.height)});
  Place(*apply_, layout.Command3, frame_->pos() + inFrame);
  Place(*close_, layout.Command4, frame_->pos() + inFrame);
  // A screen may be too low for all; the buttons can be reached there, too.
  for (QPushButton* const button : {apply_, close_}) {
    button->move(button->x(), std::min(button->y(), height() - button->height()));
  }
  series_->setVisible(mode_ != LayoutMode::kSettings);
}

/// The comments take from the grid or, where that has its share of the frame, from the series.
void NEditForm::LayDragBar() {
  const QRect box = comments_->geometry();
  const int border = mode_ == LayoutMode::kSettings ? box.top() : box.bottom();
  dragBar_->setGeometry(box.left(), border - DragBar::kHeight / 2, box.width(), DragBar::kHeight);
  dragBar_->raise();
}

void NEditForm::DragComments(int pixels) {
  const int higher = mode_ == LayoutMode::kSettings ? -pixels : pixels;
  commentsHeight_ = ToTwips(std::max(0, draggedHeight_ + higher));
  LayOut();
}

void NEditForm::hideEvent(QHideEvent* event) {
  QDialog::hideEvent(event);
  StateFile().setValue(kCommentsHeight, commentsHeight_);
}

void NEditForm::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  LayOut();
}

}  // namespace quenmar
