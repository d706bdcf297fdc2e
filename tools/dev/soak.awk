# Compares the beginning of a soak with its end: awk -v minutes=… -f soak.awk samples.tsv
#
# Memory is compared by its medians, what is counted by its least value (a request that is under way has threads and
# descriptors of its own), and what only ever rises by how far it has risen.
function median(name, from,    values, count, i, j, value) {
    for (i = 1; i <= rows; i++)
        if (seconds[i] >= from && seconds[i] < from + span)
            values[++count] = sample[name, i]
    for (i = 2; i <= count; i++) {
        value = values[i]
        for (j = i - 1; j >= 1 && values[j] > value; j--)
            values[j + 1] = values[j]
        values[j + 1] = value
    }
    return values[int((count + 1) / 2)]
}

function least(name, from,    lowest, i) {
    for (i = 1; i <= rows; i++)
        if (seconds[i] >= from && seconds[i] < from + span && (lowest == "" || sample[name, i] < lowest))
            lowest = sample[name, i]
    return lowest
}

function risen(name, from,    before, after, i) {
    for (i = 1; i <= rows; i++)
        if (seconds[i] >= from && seconds[i] < from + span) {
            if (before == "")
                before = sample[name, i]
            after = sample[name, i]
        }
    return after - before
}

function judge(name, first, last, limit) {
    printf "%-13s %10d %10d   %s\n", name, first, last, (last > limit ? "grew" : "as before")
    if (last > limit)
        grown = grown " " name
}

NR == 1 {
    for (column = 1; column <= NF; column++)
        names[column] = $column
    next
}

NF == length(names) {
    rows++
    seconds[rows] = $1
    for (column = 2; column <= NF; column++)
        sample[names[column], rows] = $column + 0
}

END {
    span = (minutes >= 20 ? 10 : minutes / 2) * 60
    end = minutes * 60 - span
    printf "%-13s %10s %10s\n", "", "first", "last"
    # A heap settles. Of the whole, some is pages of files that come and go; a kibibyte that is lost with each request
    # takes about 500 of the rest in an hour.
    limits["rss_kib"] = 1024
    limits["anonymous_kib"] = 256
    split("rss_kib anonymous_kib", medians, " ")
    for (i = 1; i in medians; i++) {
        first = median(medians[i], 0)
        judge(medians[i], first, median(medians[i], end), first + limits[medians[i]])
    }
    split("descriptors timers threads connections match_rules windows", counts, " ")
    for (i = 1; i in counts; i++) {
        first = least(counts[i], 0)
        judge(counts[i], first, least(counts[i], end), first)
    }
    split("cpu_ms switches", rates, " ")
    for (i = 1; i in rates; i++) {
        first = risen(rates[i], 0)
        judge(rates[i], first, risen(rates[i], end), first * 2 + 1000)
    }
    # Pages of libraries are private as long as no other program uses them.
    print "not judged, because it depends on what else runs:"
    split("pss_kib private_kib", others, " ")
    for (i = 1; i in others; i++)
        printf "%-13s %10d %10d\n", others[i], median(others[i], 0), median(others[i], end)
    if (rows < 4 || grown != "") {
        print "soak: " (rows < 4 ? "there are too few samples" : "grew:" grown)
        exit 1
    }
    print "soak: nothing grew"
}
