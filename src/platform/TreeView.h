#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/Control.h"
#include "platform/Keys.h"

namespace oriolemark {

// Identity of a node. It is never reused, so a reference to a removed node is harmless: operations
// on it do nothing and read as empty.
using TreeNode = int;
inline constexpr TreeNode kNoNode = 0;

// A tree with pictures and at most one selected node. The path separator is a backslash.
class TreeView : public Control {
 public:
  void Clear();
  // Adds the node behind the parent's other children, or at the top level under kNoNode.
  TreeNode Add(TreeNode parent, const std::string& text, int image);
  // Removes the node and all its children.
  void Remove(TreeNode node);

  bool Exists(TreeNode node) const { return nodes_.contains(node); }
  int Count() const { return static_cast<int>(nodes_.size()); }
  // The first node of the top level.
  TreeNode First() const;
  TreeNode Parent(TreeNode node) const;
  // In the order on the screen.
  std::vector<TreeNode> Children(TreeNode node) const;
  std::string FullPath(TreeNode node) const;

  const std::string& Text(TreeNode node) const;
  void SetText(TreeNode node, const std::string& text);
  int Image(TreeNode node) const;
  bool Expanded(TreeNode node) const;
  void SetExpanded(TreeNode node, bool expanded);
  // A sorted node shows its children in the order of their texts.
  bool Sorted(TreeNode node) const;
  void SetSorted(TreeNode node, bool sorted);
  // A marked node holds changes that are not saved yet. Its picture shows it, not its text.
  bool Marked(TreeNode node) const;
  void SetMarked(TreeNode node, bool marked);

  TreeNode Selected() const { return Exists(selected_) ? selected_ : kNoNode; }
  // Ignores a node that is not in the tree.
  void Select(TreeNode node);
  // For a tree that was cleared and rebuilt. Returns the node at the place of the old selection, or
  // the nearest shown node above it, or kNoNode if there is neither. Compares labels without the
  // value in brackets behind them. Selects the node only if it is at the very same place.
  TreeNode ReturnToPlace();

  // Asks the toolkit's side to open the label of the selected node for editing.
  void StartLabelEdit() const;
  // Asks the toolkit's side to give the tree the keyboard focus.
  void SetFocus() const;
  // The user's edit of this node's label has ended with this text. A cancelled edit is not
  // reported. The node is selected while the handler runs; the handler may change the text.
  // Afterwards the node that was clicked to end the edit is selected again.
  void EndLabelEdit(TreeNode node, std::string text);

  // The user's gestures. Click selects the node and comes first; the others act on the selected
  // node. Enter acts as a double click if the form handles no keys itself.
  void Click(TreeNode node);
  void DoubleClick() const;
  void KeyDown(int code) const;
  void MouseDown(int button) const;

  // Keeps a gesture until its event is over, because it may show a dialog or build the tree anew.
  // Returns false, and drops the gesture, if one is waiting already.
  bool PostGesture(std::function<void()> gesture);
  enum class Reach { Open, Blocked };
  // Runs the waiting gesture. Drops it if another node is selected by now, or if a modal window
  // blocks the tree.
  void ServeGesture(Reach reach);

  // Handlers of the form.
  std::function<void(TreeNode)> nodeClick;
  std::function<void()> doubleClick;
  std::function<void(int code)> keyDown;
  std::function<void(int button)> mouseDown;
  std::function<void(std::string& text)> afterLabelEdit;

  // The other listeners on the toolkit's side, beside onChanged.
  std::function<void()> onStartLabelEdit;
  std::function<void()> onSetFocus;

 private:
  struct Node {
    TreeNode parent = kNoNode;
    std::string text;
    int image = 0;
    bool expanded = false;
    bool sorted = false;
    bool marked = false;
    std::vector<TreeNode> children;
  };

  Node* Find(TreeNode node);
  const Node* Find(TreeNode node) const;
  void Drop(TreeNode node);
  // The label without a value in brackets behind it.
  std::string LabelOf(TreeNode node) const;
  std::vector<std::string> PlaceOf(TreeNode node) const;

  std::map<TreeNode, Node> nodes_;
  std::vector<TreeNode> top_;
  TreeNode next_ = 1;
  TreeNode selected_ = kNoNode;
  // The labels from the top level down to the node that was selected before the last Clear.
  std::vector<std::string> place_;
  std::function<void()> gesture_;  // posted and not served yet
  TreeNode meant_ = kNoNode;       // the node that was selected then
};

}  // namespace oriolemark
