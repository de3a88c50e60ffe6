// The dialog that edits the hyperlinks of the selected shapes.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "connect/dsr_visio_connect.h"
#include "hyperlinks/existing_links.h"
#include "hyperlinks/link_rows.h"
#include "model/form.h"

namespace quorvel::addin {

/// A page for each kind of link, and the list of all links. Nothing is written to the shapes before Apply, which
/// replaces all links of a single shape, and adds to those of several shapes.
class frmcustomisehuperlink : public Form {
 public:
  /// For what is selected in the active window. The drawing is that window's, even when another one becomes active.
  explicit frmcustomisehuperlink(dsrVisioConnect& frmParent);

 protected:
  void loading() override;
  bool unloading() override;

 private:
  /// The two boxes for the path of one page. Only that of the chosen option is enabled.
  struct PathBoxes {
    Control& absolute;
    Control& relative;
    Control& optionAbsolute;
    Control& optionRelative;
    std::string path;  ///< full path of the target
  };
  /// The controls that pages of several kinds have; null where a page lacks one.
  struct KindPage {
    std::string_view kind;  ///< as in `linkKinds`
    std::string_view key;   ///< the same for add_to_list
    Control& option;
    Control& frame;
    Control& address;  ///< of pages with two boxes the absolute one
    Control& description;
    Control* newWindow;
    Control* bookmark;
    PathBoxes* path;
  };
  /// While it lives, changes of the boxes are no typing: the path of the target is set by the code that fills them.
  struct Filling {
    explicit Filling(int& count) : count_(count) { ++count_; }
    ~Filling() { --count_; }
    Filling(const Filling&) = delete;
    Filling& operator=(const Filling&) = delete;

   private:
    int& count_;
  };

  Control& addFrame(const char* name, const char* caption);
  Control& addOption(const char* name, const char* caption, int column);
  Control& addTo(const Control& frame, ControlKind kind, const char* name, const char* caption, int row,
                 int column = 0);
  PathBoxes addPath(const Control& frame, const char* label, const char* absolute, const char* relative,
                    const char* options);
  std::vector<KindPage> addPages();
  void layOut();
  void addRules();
  void boxChanged(const Control& box);

  /// Null while no kind is chosen.
  const KindPage* chosenPage() const;
  const KindPage& pageOf(std::string_view kind) const;
  void chooseKind(const KindPage& page);
  void kindChosen(const KindPage& page);
  void showOnly(const Control* frame);
  void clearLinkFields(const KindPage& page);
  bool isSaved() const;
  /// Of the drawing: its file name, and its folder.
  std::string fileName() const;
  std::string folder() const;

  // frm_customise_huperlink_paths.cpp
  void addPathRules();
  void pathChanged(const Control& box);
  void goAbsolute(PathBoxes& boxes);
  void goRelative(PathBoxes& boxes);
  static void enableBox(PathBoxes& boxes, bool isRelative);
  bool offersRelative() const { return documentPath_.optionRelative.enabled(); }
  void clearPath(PathBoxes& boxes);
  /// Chooses the option and shows the text in its box; the other one is empty.
  void showPath(PathBoxes& boxes, const std::string& text, bool isRelative);
  bool linksToOwnDrawing() const;
  void browseTask();
  void browseDocument();
  void browseProgram();
  /// Shows a chosen file in both boxes where it can be reached from the drawing's folder, else in the absolute one.
  void showChosenFile(PathBoxes& boxes, const std::string& file);
  void browseBookmarks();
  void browseWeb();
  void fillPages(const Document& document);
  void fillTasks(const Document& document);
  /// Lists the pages and Tasks of the drawing that the Task page leads to, if it can be opened.
  void showTarget(const std::string& page, const std::string& task);

  // frm_customise_huperlink_rows.cpp
  /// Puts the fields of a page into the current row, or into a new one without a current row; nothing while the address
  /// is empty. `key` is that of a page. False when the mail address was refused.
  bool add_to_list(std::string_view key);
  /// The fields that add_to_list and appendListRow write alike.
  static void putFields(LinkRow& row, const KindPage& page, const std::string& address);
  /// Adds a row with the absolute address of a page, whatever the current row is; for programs, web pages and mail
  /// addresses.
  void appendListRow(const KindPage& page);
  /// True when the mail address can be used; else the user is told.
  bool validateEmail();
  void newRow();
  void deleteRow();
  void rowClicked();
  /// False when the kind of the row can't be chosen.
  bool fillFrom(const LinkRow& row);
  /// Empties what the Task page offers.
  void clearTargets();
  std::string fullTaskPath(const std::string& location, bool isRelative) const;
  void copyExisting();
  void fillFrom(const KindPage& page, const ExistingLink& link);
  /// False when the mail address was refused.
  bool apply();
  LinkRow rowAt(std::size_t index) const;
  void putRow(std::size_t index, const LinkRow& row);

  dsrVisioConnect& frmParent;
  const Document drawing_;
  std::vector<Shape> selection_;
  int currentRow_ = 0;  ///< 1-based row of the list that the page edits; 0 and -1: none
  bool dirty_ = false;
  bool hasEntry_ = false;  ///< the fields hold something that is not in the list yet
  int filling_ = 0;
  bool goesBackToKind_ = false;  ///< the kind that shows is marked as chosen again; its fields stay
  std::unique_ptr<Browser> web_;

  Control &fraKind, &fraTask, &fraDocument, &fraProgram, &fraWebPage, &fraEmail;
  Control &Option_Task, &Option_Document, &Option_Program, &Option_Web_page, &OptEmail;
  PathBoxes taskPath_, documentPath_, programPath_;
  Control &Combrowse_Task, &Comb_Page, &Comb_Task, &Comb_Zoom, &Comdbrowes_Document, &txtInternalLoc, &Command5,
      &cmdBrowes_Program, &txtAddressWebPage, &Command1, &txtbookMark_Email, &txtAddress_email;
  std::vector<KindPage> pages_;
  Control &lblLinks, &lstLinks, &cmdNew, &CmdDelete, &cmbApplay, &cmbSaveAndClose, &cmbCancle;
};

}  // namespace quorvel::addin
