// The dialog that tells the versions of the product, and where it is installed.
#pragma once

#include "connect/dsr_visio_connect.h"
#include "model/form.h"

namespace quorvel::addin {

class frmAbout : public Form {
 public:
  explicit frmAbout(dsrVisioConnect& connect);

 private:
  void fill(dsrVisioConnect& connect);

  Control& Picture1;
  Control& lblQuorvelTemplateVersion;
  Control& lblQuorvelStencilVersion;
  Control& lblInstallPath;
  Control& lblVisioVersion;
  Control& Label1;
  Control& Command1;
};

}  // namespace quorvel::addin
