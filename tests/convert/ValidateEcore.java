import org.eclipse.emf.common.util.Diagnostic;
import org.eclipse.emf.common.util.URI;
import org.eclipse.emf.ecore.EObject;
import org.eclipse.emf.ecore.EcorePackage;
import org.eclipse.emf.ecore.resource.Resource;
import org.eclipse.emf.ecore.resource.ResourceSet;
import org.eclipse.emf.ecore.resource.impl.ResourceSetImpl;
import org.eclipse.emf.ecore.util.Diagnostician;
import org.eclipse.emf.ecore.util.EcoreUtil;
import org.eclipse.emf.ecore.xmi.impl.XMIResourceFactoryImpl;

/** Loads Ecore files with the library that they are for. Says what it finds against each, and ends with 1 for errors. */
public class ValidateEcore {
    private static boolean isFaulty = false;

    private static void tell(String file, Diagnostic diagnostic) {
        if (diagnostic.getChildren().isEmpty() && diagnostic.getSeverity() >= Diagnostic.ERROR) {
            System.err.println(file + ": " + diagnostic.getMessage());
            isFaulty = true;
        }
        for (Diagnostic child : diagnostic.getChildren())
            tell(file, child);
    }

    public static void main(String[] files) {
        for (String file : files) {
            ResourceSet set = new ResourceSetImpl();
            set.getResourceFactoryRegistry().getExtensionToFactoryMap().put("*", new XMIResourceFactoryImpl());
            set.getPackageRegistry().put(EcorePackage.eNS_URI, EcorePackage.eINSTANCE);
            Resource resource = set.getResource(URI.createFileURI(file), true);
            EcoreUtil.resolveAll(set);
            if (!EcoreUtil.UnresolvedProxyCrossReferencer.find(resource).isEmpty()) {
                System.err.println(file + ": a reference leads nowhere");
                isFaulty = true;
            }
            for (EObject root : resource.getContents())
                tell(file, Diagnostician.INSTANCE.validate(root));
        }
        System.exit(isFaulty ? 1 : 0);
    }
}
