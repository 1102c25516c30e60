"""The truth of a recording: where three of four analyses that look at different things agree, ours not among them."""

import numpy as np

import peers

CENTS = 50.0  # within which voices agree
LEAST = 3  # voters that must agree


def of_tracks(tracks):
    """The pitch that at least LEAST of the rows of `tracks` agree on, 0 where as many hear none, NaN where neither."""
    truth = np.full(tracks.shape[1], np.nan)
    truth[np.sum(tracks == 0, axis=0) >= LEAST] = 0.0
    with np.errstate(divide="ignore"):
        cents = np.where(tracks > 0, 1200.0 * np.log2(tracks), np.inf)
    cents.sort(axis=0)
    for count in range(LEAST, len(tracks) + 1):  # the more that agree, the later and the last to be written
        for first in range(len(tracks) - count + 1):
            group = cents[first : first + count]
            with np.errstate(invalid="ignore"):
                agree = np.isfinite(group[-1]) & (group[-1] - group[0] <= CENTS)
            truth[agree] = np.exp2(np.median(group[:, agree], axis=0) / 1200.0)
    return truth


def truths(paths, without=None):
    """The truth of each path on its grid. The analysis `without` has no vote, so that it is not its own judge."""
    voters = [name for name in peers.VOTERS if name != without]
    for name in voters:
        peers.need(name, paths)
    for path in paths:
        yield of_tracks(np.array([peers.result(name, path)[0] for name in voters]))
