"""The agent of a desktop session: jobs from outside it whose dialogs come up on its screen."""

import array
import os
import pathlib
import signal
import socket
import subprocess
import unittest

import desk
from screen import Screen, wait_for
from test_desktop import ScreenTest

DIALOG = "Create PDF - Office"


class Caller:
    """One job on its way through the agent, as a print monitor hands it over."""

    def __init__(self, test, name, settings=()):
        self.socket = socket.socket(socket.AF_UNIX, socket.SOCK_SEQPACKET)
        test.addCleanup(self.socket.close)
        self.socket.settimeout(60)
        wait_for(lambda: self.socket.connect_ex(str(test.address)) == 0, "an agent that listens")
        document = test.file(f"{name}.ps", desk.document(name).replace(b"\n", b"\r\n"))
        os.chown(document, test.user or -1, -1)
        fields = ["print 1", name, str(document), "A title", "Office", *settings]
        self.socket.send(b"".join(field.encode() + b"\0" for field in fields))

    def answer(self):
        """The next packet's fields; none when the agent is gone. A descriptor in it is closed."""
        packet, control, _, _ = self.socket.recvmsg(65536, socket.CMSG_SPACE(4))
        for _, _, descriptors in control:
            for descriptor in array.array("i", descriptors):
                os.close(descriptor)
        return packet.decode().split("\0")[:-1]


class AgentTest(ScreenTest):
    def setUp(self):
        super().setUp()
        self.environment["XDG_RUNTIME_DIR"] = str(self.root / "run")
        (self.root / "run").mkdir(mode=0o700)
        self.address = self.root / "run/tessary/agent"
        self.settings(showsettings="always", showprogress="no", showprogressfinished="no", output=self.output,
                      usedefaultauthor="no", usedefaulttitle="no")

    def start_agent(self):
        agent = self.start("tessary-agent")
        self.addCleanup(agent.kill)
        with socket.socket(socket.AF_UNIX, socket.SOCK_SEQPACKET) as probe:
            wait_for(lambda: probe.connect_ex(str(self.address)) == 0, "the agent")
        return agent

    def running(self):
        """The programs of this desk that run."""
        found = []
        for process in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                if str(self.root).encode() in (process / "environ").read_bytes():
                    found.append((process / "comm").read_text().strip())
            except (FileNotFoundError, ProcessLookupError, PermissionError):
                pass
        return sorted(found)


class Session(AgentTest):
    def test_dialogs_come_up_one_after_the_other(self):
        agent = self.start_agent()
        callers = [Caller(self, name) for name in ("first", "second")]
        for caller in callers:
            self.assertEqual(caller.answer(), ["queued"])
        for caller, name in zip(callers, ("first", "second")):
            self.assertEqual(caller.answer(), ["started", str(self.scratch)])
            window = self.screen.await_window(DIALOG)
            self.screen.picture(f"agent-{name}", window)
            other = self.root / f"{name}.pdf"
            self.screen.type(str(other)[:-4])
            self.screen.key("Return")
            self.assertEqual(caller.answer(), ["ended", "0", ""])
            self.assertText(other, name)
        self.assertEqual(self.leftovers(), [])
        agent.terminate()
        self.assertEqual(self.ended(agent), (0, ""))

    def test_what_is_cut_off_leaves_nothing_on_the_screen(self):
        self.output.write_bytes(b"old")
        for what in ("the caller hangs up", "the agent is killed", "the session ends"):
            with self.subTest(what):
                agent = self.start_agent()
                caller, waiting = Caller(self, "one"), Caller(self, "two")
                self.screen.await_window(DIALOG)
                self.assertIn("gui", self.running())
                self.assertEqual([caller.answer()[0], caller.answer()[0]], ["queued", "started"])
                self.assertEqual(waiting.answer(), ["queued"])
                if what == "the caller hangs up":
                    caller.socket.close()
                    self.assertEqual(waiting.answer()[0], "started")
                    self.screen.await_window(DIALOG)
                    agent.terminate()
                else:
                    agent.send_signal(signal.SIGKILL if "killed" in what else signal.SIGTERM)
                    self.assertEqual(caller.answer(), [])
                self.assertEqual(waiting.answer(), [])
                agent.wait()
                wait_for(lambda: not self.running(), "the end of all that was started")
                self.assertEqual(self.screen.windows(DIALOG), [])
                self.assertEqual(self.output.read_bytes(), b"old")

    def test_a_job_under_way_ends_with_its_ghostscript(self):
        self.settings(output=self.output)
        self.ghostscript('[ "$1" = --version ] && exec "$real" "$@"; exec sleep 60')
        agent = self.start_agent()
        caller = Caller(self, "one")
        wait_for(lambda: "sleep" in self.running(), "Ghostscript")
        caller.socket.close()
        wait_for(lambda: self.running() == ["tessary-agent"], "the end of the job")
        wait_for(lambda: not self.leftovers(), "the end of its files")
        agent.terminate()

    def test_a_second_agent_ends_at_once(self):
        first = self.start_agent()
        self.assertEqual(self.run_program("tessary-agent"), (0, ""))
        first.kill()
        first.wait()
        self.start_agent()
        self.settings(output=self.output)
        caller = Caller(self, "one")
        self.assertEqual([caller.answer()[0] for _ in range(3)], ["queued", "started", "ended"])

    @unittest.skipUnless(os.geteuid() == 0, "needs two users")
    def test_others_are_turned_away(self):
        self.drop_privileges()
        agent = self.start_agent()
        script = ("import socket, sys; s = socket.socket(socket.AF_UNIX, socket.SOCK_SEQPACKET);"
                  "s.connect(sys.argv[1]); s.settimeout(20); sys.exit(len(s.recv(100)))")
        call = ["python3", "-c", script, self.address]
        self.assertNotEqual(subprocess.run(call, user=65533, stderr=subprocess.DEVNULL).returncode, 0)
        # Also where the folders would let them in.
        for folder in (self.root, self.root / "run", self.root / "run/tessary"):
            folder.chmod(0o755)
        self.address.chmod(0o777)
        self.assertEqual(subprocess.run(call, user=65533).returncode, 0)
        for folder in (self.root / "run/tessary", self.root / "run"):
            folder.chmod(0o700)
        self.assertEqual(Caller(self, "one").answer(), ["queued"], "root may call")
        agent.terminate()
        self.assertIn("a caller of user 65533 was turned away", self.ended(agent)[1])


class Display(AgentTest):
    def test_without_a_display_there_is_nothing_to_serve(self):
        del self.environment["DISPLAY"]
        code, words = self.run_program("tessary-agent")
        self.assertEqual(code, 1)
        self.assertIn("there is no display", words)

    def test_a_new_session_takes_the_place_of_one_that_is_over(self):
        over = Screen(window_manager=False)
        self.environment["DISPLAY"] = over.display
        first = self.start_agent()
        over.close()
        self.environment["DISPLAY"] = self.screen.display
        second = self.start("tessary-agent")
        self.addCleanup(second.kill)
        self.assertEqual(self.ended(first), (0, ""))
        caller = Caller(self, "one")
        self.assertEqual([caller.answer()[0], caller.answer()[0]], ["queued", "started"])
        self.screen.await_window(DIALOG)


if __name__ == "__main__":
    unittest.main()
