#include "platform/Form.h"

#include "platform/Waiting.h"

namespace oriolemark {
namespace {

void Call(const std::function<void()>& listener) {
  if (listener) listener();
}

}  // namespace

void Form::Tell() const {
  Call(onChanged);
}

void Form::SetCaption(const std::string& caption) {
  if (caption == caption_) return;
  caption_ = caption;
  Tell();
}

void Form::Load() {
  if (loaded_) return;
  Call(onLoading);
  loaded_ = true;
  Form_Load();
}

void Form::Show() {
  Load();
  if (visible_) return;
  visible_ = true;
  Tell();
}

void Form::ShowModal(Waiting& waiting) {
  if (visible_) return;
  modal_ = true;
  Show();
  // When the program closes, the wait ends while the form is still loaded.
  if (!waiting.WaitForUser([this] { return !loaded_; })) Unload();
  modal_ = false;
}

bool Form::AskModal(Waiting& waiting) {
  accepted_ = false;
  ShowModal(waiting);
  return accepted_;
}

void Form::Accept() {
  accepted_ = true;
  Unload();
}

void Form::Hide() {
  if (!visible_) return;
  visible_ = false;
  Tell();
}

void Form::BringToFront() {
  Show();
  Call(onFront);
}

bool Form::Unload() {
  if (!loaded_) return true;
  if (!Form_QueryUnload()) return false;
  // Marks the form unloaded before the handlers run, so that nothing they start unloads it again.
  loaded_ = false;
  Hide();
  Form_Unload();
  return true;
}

void Form::Repaint() const {
  Call(onRepaint);
}

void Form::Move(const UnitRect& place) {
  place_ = place;
  Call(onMoved);
}

void Form::NoteInnerSize(double width, double height) {
  if (width == innerWidth_ && height == innerHeight_) return;
  innerWidth_ = width;
  innerHeight_ = height;
  if (loaded_) Form_Resize();
}

}  // namespace oriolemark
