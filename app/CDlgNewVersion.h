// The notice that a newer version exists, with the download address as a link (template 4007).
#pragma once

#include <string>

#include "sdk/ui/CDialog.h"
#include "ui/CStaticEx.h"

class CDlgNewVersion : public CDialog {
 public:
  explicit CDlgNewVersion(CWnd* parent = nullptr);

  std::wstring m_address;  // set before DoModal
  CStaticEx m_link;

 protected:
  void DoDataExchange(CDataExchange* exchange) override;
  bool OnInitDialog() override;
};
