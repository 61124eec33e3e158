#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// The controls of a window without a toolkit: what can be seen of each, and two kinds of listener.
/// The handlers are the form's; the observer is the view, which mirrors what it is told.
///
/// Setting a property from code raises the same event as the user's gesture, when the property
/// really changes. The gestures (Click, Type, Choose …) are what a user can do: they do nothing
/// where a disabled or hidden control, or one inside such a frame, would not react.
namespace morvelle {

class Control;

/// What has changed of a control.
enum class Aspect { Enabled, Visible, Caption, Text, Checked, Items, Selection, Focus };

/// The view's ear. It must not change the control from inside the call.
class ControlObserver {
 public:
  ControlObserver() = default;
  ControlObserver(const ControlObserver&) = delete;
  ControlObserver& operator=(const ControlObserver&) = delete;
  virtual ~ControlObserver() = default;
  virtual void ControlChanged(Control& control, Aspect aspect) = 0;
};

using Handler = std::function<void()>;

/// What every control has. Captions and texts are Windows-1252.
class Control {
 public:
  /// `name` is unique in the window; an element of a control array carries its index: "lstBox(0)".
  Control(std::string name, const Control* parent, std::string_view caption = {});
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control() = default;

  [[nodiscard]] const std::string& Name() const { return name_; }
  [[nodiscard]] const Control* Parent() const { return parent_; }
  [[nodiscard]] const std::string& Caption() const { return caption_; }
  void SetCaption(std::string_view caption);
  [[nodiscard]] bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  [[nodiscard]] bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  /// Gives the control the keyboard focus.
  void SetFocus();
  /// Enabled and visible, and so is every frame or menu around it.
  [[nodiscard]] bool Reachable() const;

  /// Text shown when the pointer rests on the control.
  [[nodiscard]] const std::string& ToolTip() const { return toolTip_; }
  void SetToolTip(std::string_view text) { toolTip_ = text; }

  void Observe(ControlObserver* observer) { observer_ = observer; }

 protected:
  void Tell(Aspect aspect);

 private:
  std::string name_;
  const Control* parent_;
  std::string caption_;
  std::string toolTip_;
  bool enabled_ = true;
  bool visible_ = true;
  ControlObserver* observer_ = nullptr;
};

class Frame : public Control {
 public:
  using Control::Control;
};

class Label : public Control {
 public:
  using Control::Control;
};

/// A push button, or a picture that reacts to a click.
class PushButton : public Control {
 public:
  using Control::Control;
  Handler onClick;
  /// Gesture.
  void Click();
};

class CheckBox : public Control {
 public:
  using Control::Control;
  Handler onClick;
  [[nodiscard]] bool Checked() const { return checked_; }
  void SetChecked(bool checked);
  /// Gesture: the other state.
  void Click();

 private:
  bool checked_ = false;
};

/// One of a group of which one is chosen: choosing it releases the others.
class OptionButton : public Control {
 public:
  using Control::Control;
  Handler onClick;
  /// The others of the group, told once by the form.
  void JoinGroup(std::vector<OptionButton*> others) { others_ = std::move(others); }
  [[nodiscard]] bool Chosen() const { return chosen_; }
  void Choose();
  /// Gesture.
  void Click();

 private:
  void Release();
  std::vector<OptionButton*> others_;
  bool chosen_ = false;
};

/// Key codes of Windows (winuser.h, VK_*) for what the program listens to.
inline constexpr int kKeyReturn = 13;

class TextBox : public Control {
 public:
  using Control::Control;
  Handler onChange;
  std::function<void(int keyCode)> onKeyDown;
  /// Called instead of onChange when the user brought in what a word may not hold, a character that
  /// Windows-1252 lacks or a control character; the text stays as it was.
  Handler onRefused;
  [[nodiscard]] const std::string& Text() const { return text_; }
  void SetText(std::string_view text);
  /// Whether the user may only read and copy the text.
  [[nodiscard]] bool ReadOnly() const { return readOnly_; }
  void SetReadOnly(bool readOnly) { readOnly_ = readOnly; }
  /// Gesture: the text as the user left it, UTF-16 as the toolkits give it.
  void Type(std::u16string_view text);
  /// Gesture.
  void KeyDown(int keyCode);

 private:
  std::string text_;
  bool readOnly_ = false;
};

/// A list of lines, of which one is current or none (-1). A list of several selections keeps a
/// selected state for each line beside the current one.
class ListBox : public Control {
 public:
  ListBox(std::string name, const Control* parent, bool severalSelections = false);
  Handler onClick;

  [[nodiscard]] const std::vector<std::string>& Items() const { return items_; }
  [[nodiscard]] int Count() const { return static_cast<int>(items_.size()); }
  /// Empty when there is no such line.
  [[nodiscard]] const std::string& Item(int index) const;
  void AddItem(std::string_view text);
  void SetItem(int index, std::string_view text);
  /// Removing the current line leaves none current; the lines after it keep theirs.
  void RemoveItem(int index);
  void Clear();

  [[nodiscard]] int ListIndex() const { return listIndex_; }
  /// -1 for none. Raises onClick when the current line changes.
  void SetListIndex(int index);

  [[nodiscard]] bool SeveralSelections() const { return severalSelections_; }
  [[nodiscard]] bool Selected(int index) const;
  void SetSelected(int index, bool selected);

  /// Gesture: a click on a line, the current one included. In a list of several selections it
  /// turns the line's state over.
  void ClickItem(int index);

 private:
  void MakeCurrent(int index);
  std::vector<std::string> items_;
  std::vector<bool> selected_;
  int listIndex_ = -1;
  bool severalSelections_;
};

/// Nine panels, numbered from 1 as the form numbers them.
class StatusBar : public Control {
 public:
  static constexpr int kPanelCount = 9;
  StatusBar(std::string name, const Control* parent);
  [[nodiscard]] const std::string& Panel(int number) const;
  void SetPanel(int number, std::string_view text);

 private:
  std::vector<std::string> panels_;
};

/// An entry of the menu bar; "-" is the caption of a separator.
class MenuItem : public Control {
 public:
  using Control::Control;
  Handler onClick;
  [[nodiscard]] bool Checked() const { return checked_; }
  void SetChecked(bool checked);
  /// Gesture.
  void Choose();

 private:
  bool checked_ = false;
};

/// The entries of a submenu that has one for each rule. Element 0 is always there. The view fills
/// the submenu when it is opened.
class MenuArray : public Control {
 public:
  using Control::Control;
  std::function<void(int index)> onClick;
  [[nodiscard]] int Count() const { return static_cast<int>(entries_.size()); }
  /// Makes the element; false when it is there already.
  bool Load(int index);
  /// Shortens the array to `count` elements, one at the least.
  void Shorten(int count);
  [[nodiscard]] const std::string& CaptionOf(int index) const;
  void SetCaptionOf(int index, std::string_view caption);
  [[nodiscard]] bool EnabledOf(int index) const;
  void SetEnabledOf(int index, bool enabled);
  /// Gesture.
  void Choose(int index);

 private:
  struct Entry {
    std::string caption;
    bool enabled = true;
  };
  std::vector<Entry> entries_ = std::vector<Entry>(1);
};

}  // namespace morvelle
