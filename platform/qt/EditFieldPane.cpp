#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTimer>
#include <QUrl>

#include "platform/Application.h"
#include "platform/Control.h"
#include "platform/Files.h"
#include "platform/qt/FittedText.h"
#include "platform/qt/Text.h"
#include "platform/qt/WidgetPane.h"
#include "platform/runtime/Secrecy.h"

namespace zelto {

namespace {

// Lets files of some types be dropped on a widget, and keeps all other files off it.
class FileDrops : public QObject {
 public:
  FileDrops(EditField& field, QWidget* widget, String filter)
      : QObject(widget), mField(field), mFilter(std::move(filter)) {
    widget->setAcceptDrops(true);
    widget->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    const auto type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) return false;
    auto& drop = static_cast<QDropEvent&>(*event);
    if (!drop.mimeData()->hasUrls()) return false;
    const String path = FirstFile(drop.mimeData()->urls());
    if (!MatchesFilter(path, mFilter)) {
      drop.ignore();
      return true;
    }
    drop.setDropAction(Qt::CopyAction);
    drop.accept();
    // Later, so that the other program is not kept waiting for what the handler does.
    if (type == QEvent::Drop) QTimer::singleShot(0, this, [=, this] { Deliver(path); });
    return true;
  }

 private:
  // In the bytes of the file system, which need not be UTF-8; nil when it is not a local file.
  static String FirstFile(const QList<QUrl>& urls) {
    if (urls.isEmpty() || !urls.constFirst().isLocalFile()) return {};
    const QString encoded = urls.constFirst().path(QUrl::FullyEncoded);
    return QByteArray::fromPercentEncoding(encoded.toLatin1()).toStdString();
  }

  void Deliver(const String& path) {
    if (HandlerWaits()) return;
    InvokeHandler([&, alive = Ref<EditField>(&mField)] {
      const auto drag = RuntimeNewObject<DragItem>();
      drag->FolderItem(FolderItem::At(path));
      alive->Raise("DropObject", {Ref<Object>(drag), Int32(0)});
    });
  }

  EditField& mField;
  String mFilter;
};

class EditFieldPaneImp : public WidgetPane<EditFieldPane> {
 public:
  EditFieldPaneImp(EditField& field, QLineEdit* line)
      : WidgetPane(line), mField(field), mLine(line) {
    line->setFocusPolicy(Qt::ClickFocus);
    QObject::connect(line, &QLineEdit::textChanged, line, [this] { Changed(); });
  }
  EditFieldPaneImp(const EditFieldPaneImp&) = delete;
  EditFieldPaneImp& operator=(const EditFieldPaneImp&) = delete;
  ~EditFieldPaneImp() override {
    if (!IsPassword()) return;
    Overwrite(mBefore);
    Overwrite(ShownText());
  }

  void SetProperty(const String& name, const PropertyValue& value) override {
    if (name == "Text") return Write(std::get<String>(value));
    if (name == "Multiline" && std::get<bool>(value)) return MakeArea();
    if (name == "ReadOnly") return SetReadOnly(std::get<bool>(value));
    if (name == "Password" && std::get<bool>(value) && mLine) {
      mLine->setEchoMode(QLineEdit::Password);
    }
    if (name == "TextSize" && mLine) return SetTextSize(value);
    if (name == "ScrollbarVertical" && mArea && !std::get<bool>(value)) {
      mArea->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }
    WidgetPane::SetProperty(name, value);
  }

  String Text() const override {
    return ShownText() == mShown ? mWritten : FromQString(ShownText());
  }

  void SetText(const String& text) override {
    Write(text);
    mField.Raise("TextChange");
  }

  void SelectAll() override { mLine ? mLine->selectAll() : mArea->selectAll(); }

  void AcceptFileDrop(const String& type) override {
    new FileDrops(mField, mArea ? mArea->viewport() : &Widget(), type);
  }

 private:
  QString ShownText() const { return mLine ? mLine->text() : mArea->toPlainText(); }

  bool IsPassword() const { return mLine && mLine->echoMode() == QLineEdit::Password; }

  // Every copy that shares the text's memory, so the line edit's own as well.
  static void Overwrite(const QString& text) {
    Wipe(const_cast<QChar*>(text.constData()),
         static_cast<std::size_t>(text.size()) * sizeof(QChar));
  }

  void Show(const QString& text) {
    mIsWriting = true;
    mLine ? mLine->setText(text) : mArea->setPlainText(text);
    mIsWriting = false;
  }

  void Write(const String& text) {
    mWritten = text;
    Show(ToDisplayText(text));
    mShown = ShownText();
    mBefore = mShown;
  }

  // The line keeps each letter for an undo that a password does not have, until its text is set.
  void ForgetHistory() {
    Overwrite(mBefore);
    const int cursor = mLine->cursorPosition();
    Show(mLine->text());
    mLine->setCursorPosition(cursor);
  }

  // By the user's hand or by assistive technology.
  void Changed() {
    if (mIsWriting) return;
    if (HandlerWaits()) return Show(mBefore);
    if (IsPassword()) ForgetHistory();
    mBefore = ShownText();
    InvokeHandler([alive = Ref<EditField>(&mField)] { alive->Raise("TextChange"); });
  }

  void MakeArea() {
    mArea = new QPlainTextEdit(Widget().parentWidget());
    mArea->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    mArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    mArea->setTabChangesFocus(true);
    QObject::connect(mArea, &QPlainTextEdit::textChanged, mArea, [this] { Changed(); });
    mArea->setObjectName(Widget().objectName());
    mArea->setProperty("TabIndex", Widget().property("TabIndex"));
    Replace(mArea);
    mLine = nullptr;
  }

  // A line of text as high as the field is, at the most.
  void SetTextSize(const PropertyValue& size) {
    constexpr int frame = 6;
    WidgetPane::SetProperty("TextSize", size);
    mLine->setFont(FittedFont(mLine->font(), "Áy", {mLine->width(), mLine->height() - frame}, 0));
  }

  void SetReadOnly(bool isReadOnly) {
    mLine ? mLine->setReadOnly(isReadOnly) : mArea->setReadOnly(isReadOnly);
  }

  EditField& mField;
  QPointer<QLineEdit> mLine;
  QPointer<QPlainTextEdit> mArea;
  String mWritten;  // what the program wrote last
  QString mShown;   // how that is shown
  QString mBefore;  // what was shown before a change
  bool mIsWriting = false;
};

}  // namespace

std::unique_ptr<EditFieldPane> NewEditFieldPane(EditField& field, WindowImp& window) {
  return std::make_unique<EditFieldPaneImp>(field, new QLineEdit(ContentOf(window)));
}

}  // namespace zelto
