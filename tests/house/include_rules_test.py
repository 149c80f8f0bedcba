#!/usr/bin/env python3
"""The include rules notice what they are there for."""
import unittest

from include_rules import faults_of


class IncludeRulesTest(unittest.TestCase):
    def faults(self, path, line):
        return list(faults_of(path, line + "\n"))

    def test_downward_includes_pass(self):
        for path, line in [
            ("plugin/MotionControlAxisPlugin.cpp", '#include "editor/MotionControlAxisFactory.h"'),
            ("pages/Page.cpp", '#include "axisdata/AxisRecord.h"'),
            ("online/Page.cpp", '#include "protocol/AxisRefLayout.h"'),
            ("host/components/A.cpp", '#include "host/languagecore/ACCore.h"'),
            ("workbench/Main.cpp", '#include "host/communication/RpcCmdSend.h"'),
            ("sdk/IView.h", "#include <QIcon>"),
        ]:
            self.assertEqual(self.faults(path, line), [], line)

    def test_forbidden_includes_are_noticed(self):
        for path, line in [
            ("sdk/IView.h", '#include "host/projectmodel/AxisModel.h"'),
            ("pages/Page.cpp", '#include "online/OnlineDebugWidget.h"'),
            ("online/Page.cpp", '#include "pages/ModelAndParamtSetWidget.h"'),
            ("axisdata/A.cpp", '#include "editor/BasicSetWidget.h"'),
            ("host/projectmodel/A.cpp", '#include "host/components/CLineEdit.h"'),
            ("host/projectmodel/A.cpp", '#include "axisdata/AxisConstants.h"'),
            ("host/communication/A.cpp", '#include "host/projectmodel/AxisModel.h"'),
            ("workbench/A.cpp", '#include "plugin/MotionControlAxisPlugin.h"'),
            ("controller/A.cpp", '#include "host/communication/RpcCmdSend.h"'),
            ("editor/A.cpp", '#include "workbench/MainWindow.h"'),
            ("online/A.cpp", '#include "protocol/motion.pb.h"'),
            ("online/A.cpp", "#include <grpcpp/channel.h>"),
            ("pages/A.cpp", "#include <unistd.h>"),
            ("pages/A.cpp", '#include "somewhere/Else.h"'),
        ]:
            self.assertEqual(len(self.faults(path, line)), 1, line)


if __name__ == "__main__":
    unittest.main()
