"""Counts the machines by outcome at the end of a run, even if the run stops early."""
import collections

from ansible.plugins.callback import CallbackBase

OUTCOMES = "installed", "to be changed", "already equal", "failed", "unreachable", "not started"


class CallbackModule(CallbackBase):
    CALLBACK_VERSION = 2.0
    CALLBACK_TYPE = "aggregate"
    CALLBACK_NAME = "update_summary"

    def __init__(self):
        super().__init__()
        self._outcomes = {}
        self._item_reasons = collections.defaultdict(list)  # by host; the result of a loop need not contain them

    def v2_playbook_on_play_start(self, play):
        for host in play.get_variable_manager().get_vars(play=play)["ansible_play_hosts_all"]:
            self._outcomes.setdefault(host, ("not started", ""))

    def v2_runner_on_ok(self, result):
        if result._task.action == "install_update":
            found = result._result
            waiting = "to be changed" if found["differing"] else "already equal"
            self._note(result, "installed" if found["changed"] else waiting)

    def v2_runner_item_on_failed(self, result):
        self._item_reasons[result._host.get_name()].append(message(result))

    def v2_runner_on_failed(self, result, ignore_errors=False):
        reasons = self._item_reasons.pop(result._host.get_name(), [message(result)])
        self._note(result, "failed", "; ".join(reasons))

    def v2_runner_on_unreachable(self, result):
        self._note(result, "unreachable")

    def v2_playbook_on_stats(self, stats):
        machines = collections.defaultdict(list)
        for host, outcome in self._outcomes.items():
            machines[outcome].append(host)
        self._display.banner("UPDATE SUMMARY")
        for (outcome, reason), hosts in sorted(machines.items(), key=lambda each: OUTCOMES.index(each[0][0])):
            self._display.display(f"{outcome}: {len(hosts)}{reason and f' ({reason})'}: {some(hosts)}")

    def _note(self, result, outcome, reason=""):
        self._outcomes[result._host.get_name()] = (outcome, reason)


def message(result):
    return str(result._result.get("msg", "")).partition("\n")[0]


def some(names):
    return ", ".join(names[:20]) + (", …" if len(names) > 20 else "")
