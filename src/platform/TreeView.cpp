#include "platform/TreeView.h"

#include <algorithm>
#include <utility>

namespace oriolemark {

TreeView::Node* TreeView::Find(TreeNode node) {
  const auto found = nodes_.find(node);
  return found == nodes_.end() ? nullptr : &found->second;
}

const TreeView::Node* TreeView::Find(TreeNode node) const {
  const auto found = nodes_.find(node);
  return found == nodes_.end() ? nullptr : &found->second;
}

void TreeView::Clear() {
  if (Selected() != kNoNode) place_ = PlaceOf(selected_);
  nodes_.clear();
  top_.clear();
  selected_ = kNoNode;
  Tell();
}

TreeNode TreeView::Add(TreeNode parent, const std::string& text, int image) {
  Node* above = Find(parent);
  if (above == nullptr && parent != kNoNode) return kNoNode;
  const TreeNode node = next_++;
  (above != nullptr ? above->children : top_).push_back(node);
  nodes_[node] = Node{.parent = parent, .text = text, .image = image, .children = {}};
  Tell();
  return node;
}

void TreeView::Remove(TreeNode node) {
  const Node* gone = Find(node);
  if (gone == nullptr) return;
  Node* above = Find(gone->parent);
  std::erase(above != nullptr ? above->children : top_, node);
  Drop(node);
  Tell();
}

void TreeView::Drop(TreeNode node) {
  const std::vector<TreeNode> children = nodes_[node].children;
  for (const TreeNode child : children) Drop(child);
  nodes_.erase(node);
}

TreeNode TreeView::First() const {
  return top_.empty() ? kNoNode : top_.front();
}

TreeNode TreeView::Parent(TreeNode node) const {
  const Node* found = Find(node);
  return found != nullptr ? found->parent : kNoNode;
}

std::vector<TreeNode> TreeView::Children(TreeNode node) const {
  const Node* found = Find(node);
  if (found == nullptr) return node == kNoNode ? top_ : std::vector<TreeNode>{};
  std::vector<TreeNode> shown = found->children;
  if (found->sorted) {
    std::stable_sort(shown.begin(), shown.end(),
                     [this](TreeNode a, TreeNode b) { return Text(a) < Text(b); });
  }
  return shown;
}

std::string TreeView::FullPath(TreeNode node) const {
  const Node* found = Find(node);
  if (found == nullptr) return {};
  if (found->parent == kNoNode) return found->text;
  return FullPath(found->parent) + "\\" + found->text;
}

const std::string& TreeView::Text(TreeNode node) const {
  static const std::string empty;
  const Node* found = Find(node);
  return found != nullptr ? found->text : empty;
}

void TreeView::SetText(TreeNode node, const std::string& text) {
  if (Node* found = Find(node)) Change(found->text, text);
}

int TreeView::Image(TreeNode node) const {
  const Node* found = Find(node);
  return found != nullptr ? found->image : 0;
}

bool TreeView::Expanded(TreeNode node) const {
  const Node* found = Find(node);
  return found != nullptr && found->expanded;
}

void TreeView::SetExpanded(TreeNode node, bool expanded) {
  if (Node* found = Find(node)) Change(found->expanded, expanded);
}

bool TreeView::Sorted(TreeNode node) const {
  const Node* found = Find(node);
  return found != nullptr && found->sorted;
}

void TreeView::SetSorted(TreeNode node, bool sorted) {
  if (Node* found = Find(node)) Change(found->sorted, sorted);
}

bool TreeView::Marked(TreeNode node) const {
  const Node* found = Find(node);
  return found != nullptr && found->marked;
}

void TreeView::SetMarked(TreeNode node, bool marked) {
  if (Node* found = Find(node)) Change(found->marked, marked);
}

void TreeView::Select(TreeNode node) {
  if (Exists(node)) Change(selected_, node);
}

std::string TreeView::LabelOf(TreeNode node) const {
  return Text(node).substr(0, Text(node).find(" ["));
}

std::vector<std::string> TreeView::PlaceOf(TreeNode node) const {
  if (node == kNoNode) return {};
  std::vector<std::string> place = PlaceOf(Parent(node));
  place.push_back(LabelOf(node));
  return place;
}

TreeNode TreeView::ReturnToPlace() {
  TreeNode nearest = kNoNode;
  for (const std::string& label : place_) {
    if (nearest != kNoNode && !Expanded(nearest)) return nearest;
    const auto children = Children(nearest);
    const auto next = std::ranges::find(children, label, [this](TreeNode n) { return LabelOf(n); });
    if (next == children.end()) return nearest;
    nearest = *next;
  }
  Select(nearest);
  return nearest;
}

void TreeView::StartLabelEdit() const {
  if (onStartLabelEdit) onStartLabelEdit();
}

void TreeView::SetFocus() const {
  if (onSetFocus) onSetFocus();
}

void TreeView::EndLabelEdit(TreeNode node, std::string text) {
  // The widget still shows the user's text. It puts the node's own text back before the handler
  // reports anything.
  Tell();
  if (!Exists(node)) return;
  const TreeNode clicked = Selected();
  Select(node);
  if (afterLabelEdit) afterLabelEdit(text);
  SetText(node, text);
  if (Selected() == node) Select(clicked);
}

void TreeView::Click(TreeNode node) {
  Select(node);
  if (Exists(node) && nodeClick) nodeClick(node);
}

void TreeView::DoubleClick() const {
  if (doubleClick) doubleClick();
}

void TreeView::KeyDown(int code) const {
  if (keyDown) return keyDown(code);
  if (code == kEnterKey) DoubleClick();
}

bool TreeView::PostGesture(std::function<void()> gesture) {
  if (gesture_) return false;
  gesture_ = std::move(gesture);
  meant_ = Selected();
  return true;
}

void TreeView::ServeGesture(Reach reach) {
  const auto gesture = std::exchange(gesture_, nullptr);
  if (gesture && reach == Reach::Open && Selected() == meant_) gesture();
}

void TreeView::MouseDown(int button) const {
  if (mouseDown) mouseDown(button);
}

}  // namespace oriolemark
