"""The guides: their examples run as they are printed, and what they name is there."""

import pathlib
import re
import shutil

import desk

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGES = sorted([*ROOT.glob("*.md"), *ROOT.glob("docs/*.md")])
GUIDES = {page.stem: page.read_text() for page in ROOT.glob("docs/*.md") if page.stem != "decisions"}


def block(guide, language):
    """The one fenced example of a guide in a language."""
    (text,) = re.findall(rf"^```{language}\n(.*?)^```", GUIDES[guide], re.MULTILINE | re.DOTALL)
    return text


def anchors(page):
    """The names that readers of Markdown give to the headings of a page."""
    headings = re.findall(r"^#+ (.+)$", page.read_text(), re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


class Examples(desk.DeskTest):
    def setUp(self):
        super().setUp()
        self.programs = shutil.copytree(desk.PROGRAMS, self.root / "bin", symlinks=True)
        self.environment["PATH"] = f"{self.programs}:{self.environment['PATH']}"
        self.home = pathlib.Path(self.environment["HOME"])
        self.document = self.file("offer.ps", desk.document("one", "two", "three", title="Invoice 4711"))

    def run_script(self, interpreter, guide, language, *arguments):
        script = self.file("script", block(guide, language).encode())
        return self.run_program(shutil.which(interpreter), script, *arguments)

    def test_a_shell_script_prints_once_and_reads_the_report(self):
        once = self.home / "once.pdf"
        self.assertEqual(self.run_script("sh", "administrators-guide", "sh", self.document),
                         (0, f"Errors=0\nPageCount=3\nFileCount=1\nFile1={once}\n"))
        self.assertText(once, "one", "two", "three")
        bad = self.file("bad.ps", b"%!PS\nnonsense\n")
        code, words = self.run_script("sh", "administrators-guide", "sh", bad)
        self.assertEqual(code, 0, words)
        self.assertIn("Errors=1\nPageCount=0\nFileCount=0\n", words)

    def test_a_python_program_makes_pictures(self):
        pages = [self.home / f"offer-{page}.png" for page in (1, 2, 3)]
        self.assertEqual(self.run_script("python3", "administrators-guide", "python", self.document),
                         (0, "".join(f"{page}\n" for page in pages)))
        self.assertTrue(all(page.stat().st_size for page in pages))

    def test_a_macro_file_names_documents(self):
        self.file("bin/macros/invoice.vbs", block("user-guide", "vbscript").encode())
        (name,) = re.findall(r"^ +<personal>/(.*InvoiceNumber.*)$", GUIDES["user-guide"], re.MULTILINE)
        self.settings(output=self.root / name)
        self.assertEqual(self.tessary_print(self.document), (0, ""))
        (pdf,) = self.root.glob("*.pdf")
        self.assertRegex(pdf.name, r"^\d{4}-Q[1-4] 4711\.pdf$")


class Words(desk.DeskTest):
    def test_links_lead_somewhere(self):
        broken = []
        for page in PAGES:
            for target in re.findall(r"\]\(([^)\s]+)\)", page.read_text()):
                name, _, anchor = target.partition("#")
                to = page.parent / name if name else page
                if ":" not in name and not (to.exists() and (not anchor or anchor in anchors(to))):
                    broken.append(f"{page.name}: {target}")
        self.assertEqual(broken, [])

    def test_settings_and_controls_have_their_right_names(self):
        sources = "".join(path.read_text() for path in ROOT.glob("src/ui/*.cpp"))
        known = set(re.findall(r"^\| `(\w+)`", GUIDES["settings"], re.MULTILINE))
        for guide, text in GUIDES.items():
            controls = re.findall(r"`((?:txt|cmd|cb|chk|frame)[A-Z]\w+)`", text)
            self.assertEqual([name for name in controls if f'"{name}"' not in sources], [], guide)
            keys = [key for section in re.findall(r"^ +\[PDF Printer\]\n((?: .+\n)+)", text, re.MULTILINE)
                    for key in re.findall(r"^ +(\w+)=", section, re.MULTILINE)]
            keys += re.findall(r"--set '?(\w+)=", text)
            self.assertEqual([key for key in keys if key not in known], [], guide)
