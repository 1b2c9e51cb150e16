#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QStyleOptionFrame>
#include <QTimer>
#include <QUrl>

#include "platform/Application.h"
#include "platform/Control.h"
#include "platform/Files.h"
#include "platform/qt/Balloon.h"
#include "platform/qt/Toolkit.h"
#include "platform/qt/WidgetPane.h"
#include "platform/runtime/Secrecy.h"

namespace zelto {

namespace {

// Makes a widget accept drops of files that match the filter and refuse all other files. After its
// end it delivers nothing.
class FileDrops : public QObject {
 public:
  FileDrops(EditField& field, QWidget* widget, String filter)
      : mField(field), mFilter(std::move(filter)) {
    widget->setAcceptDrops(true);
    widget->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (!IsAnyOf(*event, QEvent::DragEnter, QEvent::DragMove, QEvent::Drop)) return false;
    auto& drop = static_cast<QDropEvent&>(*event);
    if (!drop.mimeData()->hasUrls()) return false;
    const String path = FirstFile(drop.mimeData()->urls());
    if (!MatchesFilter(path, mFilter)) {
      drop.ignore();
      return true;
    }
    drop.setDropAction(Qt::CopyAction);
    drop.accept();
    // Deferred, because the source of the drag waits until the event has been handled.
    if (event->type() == QEvent::Drop) QTimer::singleShot(0, this, [=, this] { Deliver(path); });
    return true;
  }

 private:
  // The path of the first file, in the file system's own bytes, which need not be valid UTF-8. Nil
  // if the first URL does not name a local file.
  static String FirstFile(const QList<QUrl>& urls) {
    if (urls.isEmpty() || !urls.constFirst().isLocalFile()) return {};
    const QString encoded = urls.constFirst().path(QUrl::FullyEncoded);
    return QByteArray::fromPercentEncoding(encoded.toLatin1()).toStdString();
  }

  void Deliver(const String& path) {
    if (HandlerWaits()) return;
    InvokeHandler(mField, [&] {
      const auto drag = RuntimeNewObject<DragItem>();
      drag->FolderItem(FolderItem::At(path));
      mField.Raise("DropObject", {Ref<Object>(drag), Int32(0)});
    });
  }

  EditField& mField;
  String mFilter;
};

// A Qt widget whose frame shows the focus only if UseFocusRing is set. It can outlive the field.
template <class Widget>
class FramedEdit : public Widget {
 public:
  using Widget::Widget;

  void UseFocusRing(bool uses) { mUsesFocusRing = uses; }

 protected:
  void initStyleOption(QStyleOptionFrame* option) const override {
    Widget::initStyleOption(option);
    if (!mUsesFocusRing) option->state &= ~QStyle::State_HasFocus;
  }

 private:
  bool mUsesFocusRing = true;
};

using LineEdit = FramedEdit<QLineEdit>;
using AreaEdit = FramedEdit<QPlainTextEdit>;

// Either a single-line or a multi-line field.
class EditFieldPaneImp : public WidgetPane<EditField, QWidget, EditFieldPane> {
 public:
  EditFieldPaneImp(EditField& field, TopLevel& top)
      : WidgetPane(field, NewWidget(field, top.Content())),
        mLine(dynamic_cast<LineEdit*>(mWidget.data())),
        mArea(dynamic_cast<AreaEdit*>(mWidget.data())) {
    const auto changed = [this] { Changed(); };
    if (mLine) QObject::connect(mLine, &QLineEdit::textChanged, mLine, changed);
    if (mArea) QObject::connect(mArea, &QPlainTextEdit::textChanged, mArea, changed);
    top.AddToTabOrder(*mWidget, Properties().TabIndex);
    EditFieldPaneImp::Update();
    EditFieldPaneImp::SetText(Properties().Text);
  }
  ~EditFieldPaneImp() override {
    if (!IsPassword()) return;
    Overwrite(mBefore);
    Overwrite(ShownText());
  }

  void Update() override {
    WidgetPane::Update();
    mWidget->setFocusPolicy(FocusPolicyOf(Properties().TabStop, true));
    mLine ? UpdateLine() : UpdateArea();
  }

  String Text() const override {
    return ShownText() == mShown ? mWritten : FromQString(ShownText());
  }

  void SetText(const String& text) override {
    mWritten = text;
    Show(ToDisplayText(text));
    mShown = ShownText();
    mBefore = mShown;
  }

  void SelectAll() override { mLine ? mLine->selectAll() : mArea->selectAll(); }

  void ShowBalloon(const String& text) override {
    delete mBalloon;
    mBalloon = new Balloon(*mWidget, ToDisplayText(text));
  }

  void AcceptFileDrop(const String& type) override {
    mDrops = std::make_unique<FileDrops>(mModel, mArea ? mArea->viewport() : mWidget.data(), type);
  }

 private:
  static QWidget* NewWidget(const EditField& field, QWidget& parent) {
    if (field.Properties().Multiline) return new AreaEdit(&parent);
    return new LineEdit(&parent);
  }

  void UpdateLine() {
    const auto& list = Properties();
    constexpr int frame = 6;
    constexpr int toolkitsLimit = 32'767;  // characters
    // The line of text must not be higher than the field.
    mLine->setFont(FittedFont(mLine->font(), "Áy", {list.Width, list.Height - frame}, 0));
    mLine->UseFocusRing(list.UseFocusRing);
    mLine->setFrame(list.Border);
    mLine->setEchoMode(list.Password ? QLineEdit::Password : QLineEdit::Normal);
    mLine->setReadOnly(list.ReadOnly);
    mLine->setMaxLength(list.LimitText > 0 ? list.LimitText : toolkitsLimit);
    mLine->setAlignment(HorizontalAlignment(list.Alignment) | Qt::AlignVCenter);
  }

  void UpdateArea() {
    const auto& list = Properties();
    mArea->UseFocusRing(list.UseFocusRing);
    mArea->setFrameShape(list.Border ? QFrame::StyledPanel : QFrame::NoFrame);
    mArea->setVerticalScrollBarPolicy(PolicyOf(list.ScrollbarVertical));
    mArea->setHorizontalScrollBarPolicy(PolicyOf(list.ScrollbarHorizontal));
    mArea->setReadOnly(list.ReadOnly);
    mArea->setTabChangesFocus(!list.AcceptTabs);
    QTextOption option = mArea->document()->defaultTextOption();
    option.setAlignment(HorizontalAlignment(list.Alignment));
    mArea->document()->setDefaultTextOption(option);
  }

  static Qt::ScrollBarPolicy PolicyOf(bool hasBar) {
    return hasBar ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff;
  }

  QString ShownText() const { return mLine ? mLine->text() : mArea->toPlainText(); }

  bool IsPassword() const { return mLine && Properties().Password; }

  // Overwrites the buffer of the text, even if the QLineEdit shares it.
  static void Overwrite(const QString& text) {
    Wipe(const_cast<QChar*>(text.constData()),
         static_cast<std::size_t>(text.size()) * sizeof(QChar));
  }

  void Show(const QString& text) {
    mIsWriting = true;
    mLine ? mLine->setText(text) : mArea->setPlainText(text);
    mIsWriting = false;
  }

  // QLineEdit keeps typed letters for undo, even in a password field. setText clears that history.
  void ForgetHistory() {
    Overwrite(mBefore);
    Replace(mLine->text());
  }

  void Replace(const QString& text) {
    const int cursor = mLine->cursorPosition();
    Show(text);
    mLine->setCursorPosition(cursor);
  }

  void StripNewlines() {
    QString text = mLine->text();
    while (text.endsWith('\n') || text.endsWith('\r')) text.chop(1);
    if (text != mLine->text()) Replace(text);
  }

  // QLineEdit enforces the limit itself.
  bool IsTooLong() const {
    return mArea && Properties().LimitText > 0 && ShownText().size() > Properties().LimitText;
  }

  // Handles a change by the user or by assistive technology.
  void Changed() {
    if (mIsWriting) return;
    if (HandlerWaits() || IsTooLong()) return Show(mBefore);
    if (IsPassword()) ForgetHistory();
    if (mLine && !IsPassword()) StripNewlines();
    mBefore = ShownText();
    InvokeHandler(mModel, [this] { mModel.Raise("TextChange"); });
  }

  QPointer<LineEdit> mLine;
  QPointer<AreaEdit> mArea;
  QPointer<Balloon> mBalloon;
  std::unique_ptr<FileDrops> mDrops;
  String mWritten;  // the last text that the program wrote
  QString mShown;   // the displayed form of mWritten
  QString mBefore;  // the displayed text before a change
  bool mIsWriting = false;
};

}  // namespace

std::unique_ptr<EditFieldPane> NewPane(EditField& field, WindowImp& window) {
  return std::make_unique<EditFieldPaneImp>(field, TopLevelOf(window));
}

}  // namespace zelto
