// Prints the subject, issuer, serial number, dates and DNS names of each certificate of a PEM file, a
// line each, or "refused".
package main

import (
	"bufio"
	"crypto/x509"
	"encoding/pem"
	"fmt"
	"os"
	"strings"
	"time"
)

func main() {
	rest, err := os.ReadFile(os.Args[1])
	if err != nil {
		fmt.Fprintln(os.Stderr, err)
		os.Exit(1)
	}
	out := bufio.NewWriterSize(os.Stdout, 1<<16)
	defer out.Flush()
	escape := strings.NewReplacer("\n", "\\n", "\t", "\\t")
	for {
		var block *pem.Block
		block, rest = pem.Decode(rest)
		if block == nil {
			return
		}
		c, err := x509.ParseCertificate(block.Bytes)
		if err != nil {
			out.WriteString("refused\n")
			continue
		}
		fields := []string{escape.Replace(c.Subject.String()), escape.Replace(c.Issuer.String()), c.SerialNumber.Text(16),
			c.NotBefore.Format(time.RFC3339), c.NotAfter.Format(time.RFC3339), escape.Replace(strings.Join(c.DNSNames, ","))}
		out.WriteString(strings.Join(fields, "\t") + "\n")
	}
}
