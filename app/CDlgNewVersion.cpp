#include "app/CDlgNewVersion.h"

#include "app/ViraResourceIds.h"

CDlgNewVersion::CDlgNewVersion(CWnd* parent) : CDialog(IDD_NEW_VERSION, parent) {}

void CDlgNewVersion::DoDataExchange(CDataExchange* exchange) {
  CDialog::DoDataExchange(exchange);
  DDX_Control(exchange, IDC_NEW_VERSION_LINK, m_link);
}

bool CDlgNewVersion::OnInitDialog() {
  CDialog::OnInitDialog();
  m_link.SetLinkMode(true);
  m_link.SetLinkCursor(AfxLoadCursor(IDR_HAND_CURSOR));
  m_link.SetLinkColour(0xFF0000);  // blue: 0x00BBGGRR
  m_link.SetLinkUnderline(true);
  m_link.SetLinkText(m_address);
  return true;
}
