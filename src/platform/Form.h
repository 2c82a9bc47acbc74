#pragma once

#include <functional>
#include <string>

#include "platform/WindowUnits.h"

namespace oriolemark {

class Waiting;

// A window. Its controls are members of the class derived from it, its handlers member functions.
//
// A form is loaded when it is first shown and unloaded when it is closed. The object outlives both,
// so a handler that is still running further down the stack keeps its members. The toolkit's side
// listens to the form, and reports its size and the user's wish to close it.
class Form {
 public:
  Form() = default;
  virtual ~Form() = default;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  const std::string& Caption() const { return caption_; }
  void SetCaption(const std::string& caption);
  // A text for the form's owner. Views of the data sheet keep their slot number here.
  const std::string& Tag() const { return tag_; }
  void SetTag(const std::string& tag) { tag_ = tag; }

  bool Loaded() const { return loaded_; }
  bool Visible() const { return visible_; }
  bool Modal() const { return modal_; }

  // Runs Form_Load, unless the form is loaded.
  void Load();
  // Loads the form and makes it visible.
  void Show();
  // Shows the form in front of all others and waits until it is unloaded.
  void ShowModal(Waiting& waiting);
  // Does the same for a dialog. Returns whether OK has accepted what the user chose.
  bool AskModal(Waiting& waiting);
  void Hide();
  void BringToFront();
  // Asks Form_QueryUnload and returns false if that refuses. Otherwise hides the form, runs
  // Form_Unload and returns true.
  bool Unload();
  // Draws the window now, without serving events.
  void Repaint() const;

  // Position and size of the window.
  const UnitRect& Place() const { return place_; }
  void Move(const UnitRect& place);
  // Room inside the window, as the toolkit's side has reported it.
  double InnerWidth() const { return innerWidth_; }
  double InnerHeight() const { return innerHeight_; }

  // For the toolkit's side only: the window was moved or sized. Runs Form_Resize if the room inside
  // has changed and the form is loaded.
  void NotePlace(const UnitRect& place) { place_ = place; }
  void NoteInnerSize(double width, double height);

  virtual void Form_Load() {}
  virtual void Form_Resize() {}

  // The only listeners, on the toolkit's side. `onLoading` is called before each load, so that a
  // window can be built when it is first needed.
  std::function<void()> onLoading;
  std::function<void()> onChanged;
  std::function<void()> onMoved;
  std::function<void()> onFront;
  std::function<void()> onRepaint;

 protected:
  // False refuses the close.
  virtual bool Form_QueryUnload() { return true; }
  virtual void Form_Unload() {}
  // Ends an OK handler.
  void Accept();

 private:
  void Tell() const;

  std::string caption_;
  std::string tag_;
  UnitRect place_;
  double innerWidth_ = 0;
  double innerHeight_ = 0;
  bool loaded_ = false;
  bool visible_ = false;
  bool modal_ = false;
  bool accepted_ = false;
};

}  // namespace oriolemark
