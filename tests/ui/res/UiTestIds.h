// The numbers of the test dialogs; the program's own numbers are smaller.
#pragma once

#define IDD_TEST_BUTTONS 9001
#define IDD_TEST_CONTROLS 9002
#define IDR_TEST_MENU 9003

#define IDC_TEST_ICON_BUTTON 9101
#define IDC_TEST_SECOND_BUTTON 9102
#define IDC_TEST_CHECK_BOX 9103
#define IDC_TEST_EDIT 9104
#define IDC_TEST_HIDDEN 9105

#define ID_TEST_FIRST_ITEM 9201
#define ID_TEST_SECOND_ITEM 9202
