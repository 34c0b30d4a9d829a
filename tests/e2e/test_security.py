"""Protected PDFs, as other programs see them, and where the passwords must not be seen."""

import os
import re
import subprocess

from desk import DeskTest, document

PASSWORDS = ["a b", "it's", 'say "no"', '"quoted"', "C:\\", "two \\\\", "back\\slash \\(", "(paren", "<hex>", "%d %s", "#1 = @x",
             "-dash", "@at", "ümlaut", "€uro „Ž“", "łódź", "日本語", "p" * 3000]


def encryption(pdf, password):
    """What qpdf tells of a PDF: the revision, the permissions, and whose password this is."""
    said = subprocess.run(["qpdf", "--show-encryption", "--password=" + password, pdf], check=True, capture_output=True)
    lines = said.stdout.decode(errors="replace").splitlines()
    return {"revision": lines[0], "permissions": lines[1],
            "owner": "Supplied password is owner password" in lines, "user": "Supplied password is user password" in lines,
            "allowed": [line.split(":")[0] for line in lines if line.endswith(": allowed")]}


class Job(DeskTest):
    def job(self, content=None, **settings):
        self.settings(output=self.output, **settings)
        return self.gui("sessionid=job", f"ps={self.file('job.ps', content or document('secret'))}", "doc=Letter")


class Protection(Job):
    def test_any_password_opens_and_none_is_in_the_document(self):
        for password in PASSWORDS:
            with self.subTest(password):
                self.assertEqual(self.job(ownerpassword=password, userpassword="user's " + password), (0, ""))
                self.assertTrue(encryption(self.output, password)["owner"])
                self.assertTrue(encryption(self.output, "user's " + password)["user"])
                content = self.output.read_bytes()
                self.assertNotIn(("user's " + password).encode(), content)
                for line in (line for line in content.splitlines() if line.startswith((b"%%Invocation:", b"%%+"))):
                    self.assertNotIn(b"Password=" + password[:1].encode(), line)
                    self.assertNotIn(str(self.root).encode(), line)
                self.assertEqual(self.leftovers(), [])

    def test_key_length_and_permissions(self):
        low, high, copy = "print low resolution", "print high resolution", "extract for any purpose"
        for bits in (40, 128):
            for permissions, allowed in ((61632, []), (61636, [low]), (63684, [low, high]), (61648, [copy]),
                                         (63700, [copy, low, high])):
                with self.subTest(bits=bits, permissions=permissions):
                    self.assertEqual(self.job(ownerpassword="o", keylength=bits, permissions=permissions), (0, ""))
                    self.assertEqual(encryption(self.output, "")["user"], True)
                    self.assertEqual(encryption(self.output, "o"), {
                        "revision": "R = 3", "permissions": f"P = {permissions}", "owner": True, "user": False,
                        "allowed": allowed})
        self.assertEqual(self.job(ownerpassword="o"), (0, ""))
        self.assertEqual(len(encryption(self.output, "")["allowed"]), 9, "all of them")

    def test_a_user_password_alone_does_not_encrypt(self):
        self.assertEqual(self.job(userpassword="u"), (0, ""))
        self.assertText(self.output, "secret")

    def test_wrong_values_are_told(self):
        for settings in ({"keylength": "abc"}, {"keylength": "256"}, {"permissions": "all"}):
            with self.subTest(settings):
                self.output.write_bytes(b"an earlier document")
                code, words = self.job(ownerpassword="hush", **settings)
                self.assertEqual(code, 1)
                self.assertRegex(words, "Error 1007: ")
                self.assertNotIn("hush", words + self.log())
                self.assertEqual(self.output.read_bytes(), b"an earlier document")

    def test_passwords_are_for_their_owner_alone(self):
        seen = self.root / "seen"
        self.ghostscript(f'echo "$@" >>"{seen}"; [ "$1" = --version ] && exec "$real" "$@"\n'
                         f'"$real" "$@"; cat "/proc/$PPID/cmdline" >>"{seen}"; echo >>"{seen}"\n'
                         f'stat -c "%a %n" "$(dirname "${{1#@}}")"/job* >>"{seen}"; exit 7')
        mask = os.umask(0)
        try:
            code, words = self.job(ownerpassword="hush", userpassword="hushhush", device="png16m")
        finally:
            os.umask(mask)
        self.assertEqual(code, 1)
        told = seen.read_text(errors="replace")
        self.assertNotIn("hush", told + words + self.log())
        modes = {path.rpartition("/")[2]: mode for mode, path in re.findall(r"(?m)^(\d+) (/.*)$", told)}
        self.assertLessEqual({"job_params.gs", "job_params.gs.run", "job_params.gs.run.err", "job_params.out", "job_printer.pdf"},
                             modes.keys())
        self.assertEqual(set(modes.values()), {"600"}, modes)
        self.assertEqual(self.leftovers(), ["job_printer.log"])


class Merging(Job):
    def setUp(self):
        super().setUp()
        self.secret = {"ownerpassword": "o", "userpassword": "u"}

    def test_the_merged_document_is_protected_and_can_be_merged_again(self):
        self.assertEqual(self.job(document("one"), **self.secret), (0, ""))
        for number in (2, 3):
            self.assertEqual(self.job(document(str(number)), mergefile=self.output, **self.secret), (0, ""))
            self.assertTrue(encryption(self.output, "o")["owner"])
            pages = subprocess.run(["qpdf", "--show-npages", "--password=u", self.output], check=True, capture_output=True)
            self.assertEqual(int(pages.stdout), number)

    def test_a_missing_file_loses_the_protection_and_the_log_says_so(self):
        missing = self.root / "missing.pdf"
        self.assertEqual(self.job(mergefile=missing, debug="yes", **self.secret), (0, ""))
        self.assertText(self.output, "secret")
        self.assertIn(f"not encrypted, because the file to merge it with does not exist: {missing}", self.log())

    def test_a_file_that_cannot_be_read_is_not_lost(self):
        self.assertEqual(self.job(document("theirs"), ownerpassword="x", userpassword="y"), (0, ""))
        locked = self.output.read_bytes()
        for content in (locked, locked[:200]):
            self.output.write_bytes(content)
            code, words = self.job(mergefile=self.output, **self.secret)
            self.assertEqual(code, 1)
            self.assertRegex(words, "Error 1007: ")
            self.assertEqual(self.output.read_bytes(), content)
