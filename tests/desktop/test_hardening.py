import random
import re
import resource
import shutil
import signal
from operator import methodcaller
from pathlib import Path
from secrets import token_hex

from desktop.memory import can_look, copies
from desktop.utility import AUTHENTICATE, PASSWORD_FIELD, Utility
from place import LONG, PROGRAM, DesktopTest


class NeverCutOff(DesktopTest):
    def test_installation_finishes_however_the_utility_ends(self):
        count, cases = (100_000, 50) if LONG else (5_000, 3)
        members = self.members(**{str(number): (b"%d" % number, 0o644) for number in range(count)})
        path, account = self.update("many.gz", members=members), self.account()
        ways = {number.name: methodcaller("kill", number) for number in map(signal.Signals, (9, 1, 2, 6, 11, 15))}
        ways = {"display": methodcaller("end_display"), "close": methodcaller("key_until_gone", "alt+F4"), **ways}
        with self.tally("an installation that has begun is finished however the utility ends") as case:
            for way, last in zip(list(ways) * cases, random.choices(list(members), k=cases)):
                with self.running(account) as utility:
                    utility.install(path)
                    utility.until(Path(last).exists, 60)
                    ways[way](utility)
                    utility.await_heirs()
                    if way == "display":
                        case(utility.exit_status() == 1, "the end of the display is a crash")
                wrong = sum(not Path(name).exists() or Path(name).read_bytes() != content
                            for name, (content, _) in members.items())
                case(not wrong, f"{way} at {last}: {wrong} members are not as they should be")
                shutil.rmtree(self.folder / "installed")


class Memory(DesktopTest):
    def test_holds_the_password_once(self):
        if not can_look():
            with self.running(self.account()) as utility, self.assertRaises(PermissionError):
                copies(utility.pid(), b"")
            self.skipTest("the memory is closed, as it has to be; looking into it takes CAP_SYS_PTRACE")
        path = self.update("update.gz", members=self.members(file=(b"new", 0o644)))
        with self.tally("the memory holds the password once, and never as the toolkit keeps text") as case:
            for password in [token_hex(20), token_hex(6), "it's $" + token_hex(8)] * (5 if LONG else 1):
                with self.running(self.account(password)) as utility:
                    def count(when):
                        plain = [re.escape(password.encode(code)) for code in ("utf-8", "utf-16-le")]
                        # The undo history of a field has one record per letter. The first ones are soon reused.
                        letters = b".{15}".join(re.escape(letter.encode()) for letter in password[6:])
                        found = [copies(utility.pid(), pattern) for pattern in (*plain, letters)]
                        case(found == [1, 0, 0], f"{len(password)} characters, {when}: {found}")
                    count("authenticated")
                    utility.set_text("Patchfile:", path)
                    utility.until(utility.can_update)
                    count("checked")
                    utility.start()
                    utility.outcome()
                    count("installed")


class Secret(DesktopTest):
    def test_core_process_clipboard_and_assistive_technology_do_not_get_it(self):
        account = self.account()
        home = Path("~" + account.name).expanduser()  # the working directory, where a core file would be
        self.addCleanup(resource.setrlimit, resource.RLIMIT_CORE, resource.getrlimit(resource.RLIMIT_CORE))
        resource.setrlimit(resource.RLIMIT_CORE, (resource.RLIM_INFINITY, resource.RLIM_INFINITY))
        with self.tally("no core, other process, clipboard or assistive technology gets the password") as case:
            for number in (signal.SIGSEGV, signal.SIGABRT) * (5 if LONG else 1):
                with Utility(account.name, PROGRAM) as utility:
                    utility.window(AUTHENTICATE)
                    utility.listen("object:text-changed")
                    utility.fill(PASSWORD_FIELD, account.password)
                    utility.key("ctrl+a", "ctrl+c", "ctrl+x")
                    utility.fill("Name:", "")
                    utility.key("ctrl+v", "x", "ctrl+a", "ctrl+c", "End", "ctrl+v")
                    utility.until(lambda: utility.text("Name:").count("x") == 2)
                    case(utility.text("Name:") == "xx", "the clipboard holds it")
                    told = "".join(text for _, text in utility.heard()) + utility.text(PASSWORD_FIELD)
                    case("x" in told and account.password not in told, "assistive technology is told it")
                    for file in "mem", "environ":
                        readable = {pid for pid in account.processes() if account.can_open(f"/proc/{pid}/{file}")}
                        case(readable and utility.pid() not in readable, f"another process can open {file}")
                    utility.kill(number)
                    left = utility.exit_status(), list(home.glob("core*"))
                    case(left == (-number, []), f"{number.name} leaves {left}")
