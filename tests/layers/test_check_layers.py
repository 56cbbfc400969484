"""The layer check must refuse what it is there to refuse: it is tried on small made-up trees."""

import os
import tempfile
import unittest

from check_layers import check

BASE = "oribund/host/base/"
TOOLKIT = "oribund/host/toolkit/"


class CheckLayers(unittest.TestCase):
    def faults(self, files):
        """The faults of a tree with these files; every source is listed unless the tree brings its own lists."""
        with tempfile.TemporaryDirectory() as root:
            for path, text in files.items():
                os.makedirs(os.path.join(root, os.path.dirname(path)), exist_ok=True)
                with open(os.path.join(root, path), "w", encoding="utf-8") as file:
                    file.write(text)
            for path in [p for p in files if p.endswith(".cpp")]:
                listing = os.path.join(root, os.path.dirname(path), "CMakeLists.txt")
                if not os.path.exists(listing):
                    with open(listing, "w", encoding="utf-8") as file:
                        file.write(f"oribund_folder(x SOURCES {os.path.basename(path)})")
            return check(root)[0]

    def assertOneFault(self, files, *words):
        faults = self.faults(files)
        self.assertEqual(len(faults), 1, faults)
        for word in words:
            self.assertIn(word, faults[0])

    def test_a_tree_in_order_passes(self):
        self.assertEqual(
            self.faults(
                {
                    BASE + "A.h": "#include <vector>\n",
                    BASE + "A.cpp": f'#include "{BASE}A.h"\n',
                    TOOLKIT + "B.h": f'  #  include "{BASE}A.h"\n/* #include <QWidget> */\n',
                    "oribund/panels/P.h": f'#include "{TOOLKIT}B.h"\n',
                    "oribund/panels/P.cpp": 'auto s = R"x(\n#include <QWidget>\n)x";\n',
                    "workbench/engine/worker/E.cpp": '#include <mlt++/Mlt.h>\n#include "oribund/panels/P.h"\n',
                    "workbench/app/W.cpp": "#include <QApplication>\n#include <unistd.h>\n",
                    "examples/e/Own.h": "",
                    "examples/e/m.cpp": '#include <oribund/panels/P.h>\n#include "Own.h"\n',
                }
            ),
            [],
        )

    def test_an_arrow_that_runs_upwards(self):
        above = {TOOLKIT + "B.h": "", BASE + "A.h": f'\n#include "{TOOLKIT}B.h"\n'}
        self.assertOneFault(above, BASE + "A.h:2", "may not include")
        sibling = {"oribund/host/effects/E.h": "", TOOLKIT + "B.h": '#include "oribund/host/effects/E.h"'}
        self.assertOneFault(sibling, "oribund/host/toolkit may not include")
        seam = {"workbench/store/S.h": "", "skin/K.h": '#include "workbench/store/S.h"'}
        self.assertOneFault(seam, "skin may not include")
        down = {"workbench/model/M.h": "", "oribund/panels/P.h": '#include <workbench/model/M.h>'}
        self.assertOneFault(down, "oribund/panels may not include")

    def test_a_library_in_the_wrong_hands(self):
        for header in ("QWidget", "QtCore/QObject", "mlt++/Mlt.h", "framework/mlt.h", "vulkan/vulkan.h"):
            self.assertOneFault({"workbench/store/S.cpp": f"#include <{header}>\n"}, header, "only ")
        self.assertOneFault({"workbench/app/A.cpp": "#include <Mlt.h>\n"}, "only workbench/engine/worker")

    def test_more_than_the_standard_library(self):
        self.assertOneFault({BASE + "A.cpp": "#include <unistd.h>\n"}, "unistd.h", "standard library")
        self.assertOneFault({"workbench/model/M.h": "#include <nlohmann/json.hpp>\n"}, "standard library")
        self.assertOneFault({BASE + "A.h": "#include <iostream>\n"}, "too heavy")
        self.assertEqual(self.faults({BASE + "A.cpp": "#include <iostream>\n"}), [])

    def test_a_circle(self):
        ring = {BASE + f"{n}.h": f'#include "{BASE}{(n + 1) % 3}.h"\n' for n in range(3)}
        self.assertOneFault(ring, "circle", f"{BASE}0.h -> {BASE}1.h -> {BASE}2.h -> {BASE}0.h")
        diamond = {
            BASE + "A.h": f'#include "{BASE}B.h"\n#include "{BASE}C.h"\n',
            BASE + "B.h": f'#include "{BASE}C.h"\n',
            BASE + "C.h": "",
        }
        self.assertEqual(self.faults(diamond), [])

    def test_a_path_that_leads_nowhere(self):
        self.assertOneFault({BASE + "A.h": "", BASE + "B.h": '#include "A.h"\n'}, "paths start at its root")
        self.assertOneFault({"oribund/attic/A.h": ""}, "no place in the layers")

    def test_a_source_that_nobody_builds(self):
        files = {BASE + "A.cpp": "", BASE + "CMakeLists.txt": "# A.cpp\noribund_folder(base SOURCES AA.cpp)\n"}
        self.assertOneFault(files, BASE + "A.cpp", "no CMakeLists.txt lists it")
        files = {BASE + "in/A.cpp": "", BASE + "CMakeLists.txt": "oribund_folder(base SOURCES in/A.cpp)\n"}
        self.assertEqual(self.faults(files), [])


if __name__ == "__main__":
    unittest.main()
