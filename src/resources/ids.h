// The numbers of every resource. The resource compiler reads this header as well, so it holds macros only.
//
// Numbers of controls are given per dialog: the same number stands for different controls in different dialogs.
#pragma once

// Strings.
#define IDS_DISCARD 130
#define IDS_NAME 131
#define IDS_SAVEFAILED 132
#define IDS_SAVED 133
#define IDS_COLUMN_NAME 134
#define IDS_KIND_FRQ 135
#define IDS_MARK 136
#define IDS_FILES 137
#define IDS_COLUMN_EDITED 138
#define IDS_RESAMPLERFILTER 139  // "|" stands for the terminators of an open dialog's filter
#define IDS_ASKINITIALIZE 140
#define IDS_ASKREMOVEALL 141
#define IDS_ASKCREATEALL 142
#define IDS_PLAY 143
#define IDS_STOP 144
#define IDS_KIND_VS4UFRQ 145
#define IDS_RANGE_VOCAL 146
#define IDS_RANGE_MALE 147
#define IDS_RANGE_FEMALE 148
#define IDS_RANGE_ALL 149
#define IDS_RANGE_CUSTOM 150
#define IDS_FROMTO 151
#define IDS_KIND_FRC 152
#define IDS_KIND_PMK 153
#define IDS_KIND_DIO 154
#define IDS_CHECKLIBRARYFAILED 155
#define IDS_COLUMN_TOBECHECKED 156
#define IDS_ASKMANUAL 157
#define IDS_KIND_MRQ 158
#define IDS_NONE 159
#define IDS_FOLDERNOTFOUND 160
#define IDS_FILENOTFOUND 161
#define IDS_WAVEINFO 162
#define IDS_MONAURAL 163
#define IDS_STEREO 164
#define IDS_MANUALFILE 165

// The strings beyond the program's first edition begin at 400.
#define IDS_UNDO 400
#define IDS_UNDONOTHING 401
#define IDS_REDO 402
#define IDS_REDONOTHING 403
#define IDS_STEPLOST_TITLE 404
#define IDS_STEPLOST 405
#define IDS_NOTHINGTOUNDO 406
#define IDS_NOTHINGTOREDO 407
#define IDS_GESTURE_FIRST 416  // the names of gestures, in their order
#define IDS_MAPCHANGED 450
#define IDS_CHECKBROKEOFF 451
#define IDS_KEPT_COMMAND 460
#define IDS_KEPT_MAP 461
#define IDS_KEPT_TIME 462
#define IDS_KEPT_BECAUSE 463
#define IDS_KEPT_SIZE 464
#define IDS_KEPT_FOLDER 465
#define IDS_KEPT_NONE 466
#define IDS_KEPT_HINT 467
#define IDS_KEPT_DONE 468
#define IDS_KEPT_FAILED 469
#define IDS_KEPT_BECAUSE_FIRST 470  // in the order of KeptBecause
#define IDS_RECOVER_ASK 480
#define IDS_RECOVER_TITLE 481
#define IDS_RECOVER_CHANGED 482
#define IDS_RECOVER_DONE 483
#define IDS_ANDMORE 484
#define IDS_COMPACTFAILED 485
#define IDS_JOB_BECAUSE_FIRST 490  // in the order of ItemEnd, from NotKept on
#define IDS_JOB_DONE 500
#define IDS_JOB_FAILED 501
#define IDS_JOB_NOTREACHED 502
#define IDS_NOTHINGAPPLIES 503
#define IDS_NORESAMPLER 510
#define IDS_RESAMPLERGONE 511
#define IDS_FAULT_FIRST 512  // in the order of MapFault::Reason, from Refused on
#define IDS_CHECK_NOTHING 517
#define IDS_CHECK_SKIPPED 518
#define IDS_CHECK_NOENTRY 519
#define IDS_NOWAVES 520
#define IDS_DOUBLECLICK 521
#define IDS_SELECTFRAMES 522
#define IDS_OPTION_EMPTY 523
#define IDS_CONVERT_SAMEKIND 524
#define IDS_BUNDLED 525
#define IDS_NOMOREMARKS 526
#define IDS_SETTINGSNOTKEPT 527
#define IDS_MAPSNOTKEPT 528
#define IDS_NOTPLAYED 529
// The strings of a check that takes its time.
#define IDS_CHECK_STOPPED 620
#define IDS_LEFT_SECONDS 621
#define IDS_LEFT_MINUTES 622
#define IDS_TIP_STOPCHECK 623
#define IDS_NOWHERE 630
#define IDS_RUN 631
#define IDS_NOSUGGESTIONS 632
#define IDS_SUGGESTED_SYLLABLE 710
#define IDS_SUGGESTED_FRAMES 711
#define IDS_SUGGESTED_FROM 712
#define IDS_SUGGESTED_TO 713
#define IDS_SUGGESTED_WHY 714
#define IDS_SUGGESTED_SUM 715
#define IDS_NAME_SUGGESTIONS 716
#define IDS_TIP_SUGGESTIONS 717
#define IDS_TIP_MODIFYTHESE 718
// The strings of reading from the recording.
#define IDS_REREAD_FIRST 660  // in the order of Reading
#define IDS_REREAD_NOVOICE 664
#define IDS_REREAD_NOSOUND 665
// The strings of listening.
#define IDS_LISTEN_NOWAVE 670
#define IDS_LISTEN_BEHIND 671
#define IDS_LISTEN_NOCURVE 672
#define IDS_LISTEN_NOSAVED 673
#define IDS_LISTEN_SAME 674
#define IDS_LISTEN_SAVED 675
#define IDS_LISTEN_EDITED 676
// The strings of the window that finds a syllable.
#define IDS_FIND_SORT_FIRST 640  // in the order of the sorts of CFindDlg
#define IDS_FIND_COUNT 645
#define IDS_FIND_NONE 646
#define IDS_TIP_FINDNAME 647
#define IDS_TIP_FINDSORT 648
#define IDS_TIP_FINDLIST 649
#define IDS_TIP_FINDGO 650
#define IDS_NAME_FINDLIST 651
// The strings of curves on the clipboard.
#define IDS_CURVE_EXPECTED 690
#define IDS_CURVE_CLIPBOARD 691

// The tips of controls, and their names for screen readers (tips.rc); the table's words for a place (READ).
#define IDS_TIP_FRAMES 530
#define IDS_TIP_KEY 531
#define IDS_TIP_UPDATE 532
#define IDS_TIP_FREQUENCY 533
#define IDS_TIP_SET 534
#define IDS_TIP_PITCH 535
#define IDS_TIP_MODULATION 536
#define IDS_TIP_FLAGS 537
#define IDS_TIP_DIRECT 538
#define IDS_TIP_PLAY 539
#define IDS_TIP_TRIPLE 540
#define IDS_TIP_DOUBLE 541
#define IDS_TIP_UNVOICE 542
#define IDS_TIP_HALVE 543
#define IDS_TIP_THIRD 544
#define IDS_TIP_AVERAGE 545
#define IDS_TIP_RELOAD 546
#define IDS_TIP_KEYFROMSELECTION 547
#define IDS_TIP_TABLE_VIEW 548
#define IDS_TIP_TABLE_BRIGHTNESS 549
#define IDS_TIP_TABLE_TRACKBAR 550
#define IDS_TIP_SYLLABLES 551
#define IDS_TIP_RESAMPLER 552
#define IDS_TIP_BROWSE 553
#define IDS_TIP_PARALLEL 554
#define IDS_TIP_DELETELLSM 555
#define IDS_TIP_ABORT 556
#define IDS_TIP_THUMBNAIL 557
#define IDS_TIP_PRESET 558
#define IDS_TIP_LOWEST 559
#define IDS_TIP_HIGHEST 560
#define IDS_TIP_USEFRQ 561
#define IDS_TIP_CONVERTFROM 562
#define IDS_TIP_CONVERTTO 563
#define IDS_TIP_CONVERTONE 564
#define IDS_TIP_CONVERTALL 565
#define IDS_TIP_CHECKNOTE 566
#define IDS_TIP_TRANSITION 567
#define IDS_TIP_BEGINNING 568
#define IDS_TIP_END 569
#define IDS_TIP_PREVIOUS 570
#define IDS_TIP_NEXT 571
#define IDS_TIP_IGNORE 572
#define IDS_TIP_MODIFY 573
#define IDS_TIP_MODIFYALL 574
#define IDS_TIP_INITBOTH 575
#define IDS_TIP_ONLYLLSM 576
#define IDS_TIP_OVERWRITE 577
#define IDS_TIP_REREAD 578
#define IDS_TIP_KEPTLIST 579
#define IDS_TIP_KEPTALL 580
#define IDS_TIP_PUTBACK 581
#define IDS_TIP_RESTRICTED 582
#define IDS_TIP_OK 583
#define IDS_TIP_CANCEL 584
#define IDS_TIP_CLOSE 585
#define IDS_TIP_DISMISS 586
#define IDS_NAME_FRAMES 587
#define IDS_NAME_FREQUENCY 588
#define IDS_NAME_PITCH 589
#define IDS_NAME_MODULATION 590
#define IDS_NAME_TABLE 591
#define IDS_NAME_TABLE_VIEW 592
#define IDS_NAME_TABLE_BRIGHTNESS 593
#define IDS_NAME_TABLE_TRACKBAR 594
#define IDS_NAME_SYLLABLES 595
#define IDS_NAME_OCTAVE 596
#define IDS_NAME_LOWNOTE 597
#define IDS_NAME_LOWOCTAVE 598
#define IDS_NAME_HIGHNOTE 599
#define IDS_NAME_HIGHOCTAVE 600
#define IDS_NAME_KEPTLIST 601
#define IDS_NAME_RESTRICTED 602
#define IDS_NAME_PROGRESS 603
#define IDS_READ_POINTER 604
#define IDS_READ_FRAME 605
#define IDS_READ_LEVEL 606
#define IDS_READ_PITCH 607
#define IDS_READ_NOTE 608
#define IDS_READ_NOPITCH 609
#define IDS_READ_MARKED 610
#define IDS_READ_SUGGESTED 611
#define IDS_READ_MARK_FIRST 612  // in the order of CheckMark

// The editor's menu is the one resource that goes by a name.
#define IDR_MENU1 L"IDR_MENU1"

// Menu commands.
#define ID_RECENT_FIRST 2000  // one for each recent folder
#define ID_RECENT_LAST 2009

#define ID_FILE_EXIT 32771
#define ID_FILE_SAVE 32772
#define ID_FILE_SAVEALL 32773
#define ID_FILE_OPEN 32795
#define ID_FILE_EDITALL 32799
#define ID_FILE_RECENT 32858

#define ID_EDIT_RELOAD 32774
#define ID_EDIT_RELOADALL 32775
#define ID_EDIT_INITIALIZE 32803
#define ID_EDIT_INITIALIZEALL 32804
#define ID_EDIT_REMOVEALL 32806
#define ID_EDIT_CREATEMISSING 32811
#define ID_EDIT_CONVERT 32814
#define ID_EDIT_SELECTALL 32817
#define ID_EDIT_RELOADSELECTED 32825

#define ID_VIEW_ZOOMIN 32776
#define ID_VIEW_ZOOMOUT 32777
#define ID_VIEW_NEXT 32788
#define ID_VIEW_PREVIOUS 32789
#define ID_VIEW_THUMBNAIL 32812
#define ID_VIEW_SPECTRUM 32832
#define ID_VIEW_COLOR_FIRST 32835
#define ID_VIEW_COLOR_COOL 32835
#define ID_VIEW_COLOR_PURPLE 32836
#define ID_VIEW_COLOR_JADE 32837
#define ID_VIEW_COLOR_GRASSY 32838
#define ID_VIEW_COLOR_FLAME 32839
#define ID_VIEW_COLOR_RUBY 32840
#define ID_VIEW_COLOR_LAST 32840
#define ID_VIEW_BRIGHTEN 32843
#define ID_VIEW_DARKEN 32844

#define ID_TOOL_OPTION 32801
#define ID_TOOL_CHECK 32822
#define ID_TOOL_MODIFYALL 32829

#define ID_HELP_ABOUT 32778
#define ID_HELP_MANUAL 32827

// These are put into the menu by the program, at the head of Edit.
#define ID_EDIT_UNDO 33000
#define ID_EDIT_REDO 33001
// And these at the end of Edit.
#define ID_EDIT_PUTBACK 33002

// These are put into the menus by the program, from IDR_ADDEDMENU.
#define ID_EDIT_FIND 33010
#define ID_EDIT_COPYCURVE 33011
#define ID_EDIT_PASTECURVE 33012
#define ID_EDIT_PASTESHAPE 33013
#define ID_FRAMES_DOUBLE 33020
#define ID_FRAMES_HALVE 33021
#define ID_FRAMES_TRIPLE 33022
#define ID_FRAMES_THIRD 33023
#define ID_FRAMES_UNVOICE 33024
#define ID_FRAMES_INTERPOLATE 33025
#define ID_FRAMES_REREAD 33026
#define ID_FRAMES_KEY 33027
#define ID_FRAMES_PLAY 33028
#define ID_GO_NEXTMARK 33030
#define ID_GO_PREVIOUSMARK 33031
#define ID_GO_NEXTUNSAVED 33032
#define ID_GO_NEXTUNREADABLE 33033
#define ID_GO_NEXTMISSING 33034
#define ID_VIEW_FIT 33040
#define ID_VIEW_CENTRE 33041
#define ID_VIEW_LARGER 33042
#define ID_VIEW_SMALLER 33043
#define ID_LISTEN_RECORDING 33050
#define ID_LISTEN_CURVE 33051
#define ID_LISTEN_BOTH 33052
#define ID_LISTEN_COMPARE 33053
#define ID_LISTEN_STOP 33054
#define ID_TOOL_SUGGESTIONS 33060

#define IDR_ACCELERATORS 138
#define IDR_SHAREDKEYS 401  // these act in every window
#define IDR_ADDEDKEYS 402   // keys of the editor, those of IDR_ADDEDMENU
#define IDR_ADDEDMENU 403   // a popup for each menu of the bar, whose items go behind that menu's own

// The editor.
#define IDD_EDITOR 129
#define IDC_EDITOR_TABLE 1001
#define IDC_EDITOR_KEY 1002
#define IDC_EDITOR_FRAMES 1004
#define IDC_EDITOR_FREQUENCY 1005
#define IDC_EDITOR_SET 1006
#define IDC_EDITOR_UPDATE 1007
#define IDC_EDITOR_TRIPLE 1009
#define IDC_EDITOR_DOUBLE 1010
#define IDC_EDITOR_UNVOICE 1011
#define IDC_EDITOR_HALVE 1012
#define IDC_EDITOR_THIRD 1013
#define IDC_EDITOR_INTERPOLATE 1014
#define IDC_EDITOR_RELOAD 1015
#define IDC_EDITOR_KEYFROMSELECTION 1016
#define IDC_EDITOR_PLAY 1018
#define IDC_EDITOR_PITCH 1021
#define IDC_EDITOR_PITCHTEXT 1022
#define IDC_EDITOR_MODULATION 1033
#define IDC_EDITOR_FLAGS 1034
#define IDC_EDITOR_DIRECT 1035
// The labels of the preview have ids in the Japanese form only, where they are greyed together with their boxes.
#define IDC_EDITOR_PITCHLABEL 1036
#define IDC_EDITOR_MODULATIONLABEL 1037
#define IDC_EDITOR_PERCENTLABEL 1038
#define IDC_EDITOR_FLAGSLABEL 1039
#define IDC_EDITOR_WAVEINFO 1045

// The children of the frequency table, wherever it stands.
#define IDC_TABLE_VIEW 2003        // the button between note rows and spectrum
#define IDC_TABLE_BRIGHTNESS 2004  // the label that opens the trackbar
#define IDC_TABLE_TRACKBAR 2005    // the brightness

// The syllable list.
#define IDD_FILELIST 131
#define IDC_LIST_FILES 1010

// The about box.
#define IDD_ABOUT 139
#define IDC_ABOUT_NAME 1011

// Options.
#define IDD_OPTION 140
#define IDC_OPTION_RESAMPLER 1012
#define IDC_OPTION_BROWSE 1013
#define IDC_OPTION_PARALLEL 1044
#define IDC_OPTION_DELETELLSM 1051

// The progress of creating or converting maps.
#define IDD_CREATEFRQ 141
#define IDC_CREATEFRQ_FILE 1014
#define IDC_CREATEFRQ_PROGRESS 1015

// Thumbnails.
#define IDD_THUMBNAIL 142
#define IDC_THUMBNAIL_NONE 1023

// The source of vs4ufrq maps.
#define IDD_OPTIONVS4UFRQ 143
#define IDC_VS4UFRQ_PRESET 1024
#define IDC_VS4UFRQ_LOWNOTE 1025
#define IDC_VS4UFRQ_LOWOCTAVE 1026
#define IDC_VS4UFRQ_HIGHNOTE 1027
#define IDC_VS4UFRQ_HIGHOCTAVE 1028
#define IDC_VS4UFRQ_USEFRQ 1030

// Converting maps to another kind.
#define IDD_CONVERT 144
#define IDC_CONVERT_ONE 1032
#define IDC_CONVERT_ALL 1033
#define IDC_CONVERT_TO 1034
#define IDC_CONVERT_FROM 1043

// The settings of a check.
#define IDD_CHECK 146
#define IDC_CHECK_LOWNOTE 1025
#define IDC_CHECK_LOWOCTAVE 1026
#define IDC_CHECK_HIGHNOTE 1027
#define IDC_CHECK_HIGHOCTAVE 1028
#define IDC_CHECK_TRANSITION 1041
#define IDC_CHECK_BEGINNING 1042
#define IDC_CHECK_END 1043

// The bar that walks through the marks of a check.
#define IDD_MODIFY 147
#define IDC_MODIFY_PREVIOUS 1042
#define IDC_MODIFY_NEXT 1043
#define IDC_MODIFY_MODIFY 1044
#define IDC_MODIFY_MODIFYALL 1045
#define IDC_MODIFY_IGNORE 1046

// The warning about a folder in which writing is restricted.
#define IDD_VIRTUALSTORE 148
#define IDC_VIRTUALSTORE_ICON 1048
#define IDC_VIRTUALSTORE_FOLDER 1049
#define IDC_VIRTUALSTORE_LINK 1050

// The choice of what to initialize of an mrq map: one syllable, and all of them.
#define IDD_INITMRQ 150
#define IDD_INITMRQALL 151
#define IDC_INITMRQ_BOTH 1052
#define IDC_INITMRQ_ONLYLLSM 1053

// Edits whose map another program has changed.
#define IDD_MAPCHANGED 450
#define IDC_MAPCHANGED_ICON 1060
#define IDC_MAPCHANGED_TEXT 1061
#define IDC_MAPCHANGED_OVERWRITE 1062
#define IDC_MAPCHANGED_RELOAD 1063

// The maps that were kept before they were overwritten or deleted.
#define IDD_KEPTFILES 460
#define IDC_KEPTFILES_LIST 1101
#define IDC_KEPTFILES_RESULT 1102
#define IDC_KEPTFILES_PUTBACK 1103
#define IDC_KEPTFILES_ALL 1104

// The progress of a check.
#define IDD_CHECKPROGRESS 470
#define IDC_CHECKPROGRESS_FILE 1014
#define IDC_CHECKPROGRESS_BAR 1015
#define IDC_CHECKPROGRESS_LEFT 1105

// The list of what Modify All would change.
#define IDD_SUGGESTIONS 490
#define IDC_SUGGESTIONS_LIST 1120
#define IDC_SUGGESTIONS_SUM 1121

// Finding a syllable.
#define IDD_FIND 480
#define IDC_FIND_NAME 1110
#define IDC_FIND_SORT 1111
#define IDC_FIND_LIST 1112
#define IDC_FIND_COUNT 1113

// Pictures.
#define IDI_MARLIT 128
#define IDC_CURSOR_SELECT 1024
#define IDC_CURSOR_PEN 1025
#define IDC_CURSOR_ERASE 1026

// Controls that no code asks for, as the resource compiler's own headers call them.
#ifndef IDC_STATIC
#define IDC_STATIC -1
#endif
