"""Clean-up of a tool or a test that a signal ends."""
import contextlib
import signal

ENDING = signal.SIGHUP, signal.SIGINT, signal.SIGTERM


def clean_up_on_signals():
    """Makes the first of the signals raise KeyboardInterrupt, which leaves all `with` blocks. Ignores the others."""
    def interrupt(*_):
        for number in ENDING:
            signal.signal(number, signal.SIG_IGN)
        raise KeyboardInterrupt

    for number in ENDING:
        signal.signal(number, interrupt)


@contextlib.contextmanager
def delayed():
    """Delays the signals until the end of the `with` block, also for the commands that it starts."""
    before = signal.pthread_sigmask(signal.SIG_BLOCK, ENDING)
    try:
        yield
    finally:
        signal.pthread_sigmask(signal.SIG_SETMASK, before)
